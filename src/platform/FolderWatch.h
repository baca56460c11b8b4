// Tells when what one folder holds has changed: an entry came, went, got another name, length, time or
// attributes. What lies deeper is not looked at. The computer level holds the volumes, which come and go.
#pragma once

#include <QString>

#include <functional>
#include <memory>

// Changes of one folder, kept by the system from the making of this until a TFolderWatch tells of them.
class TFolderChanges;

// The empty path is the computer level. Null if the folder can't be watched: it is not there or its file
// system does not tell. Any thread; blocks on the file system.
[[nodiscard]] std::shared_ptr<TFolderChanges> KeepChanges(const QString& folder);

// Changes are joined: the first one is told after a fifth of a second, with all that came meanwhile, and in
// between nothing is done for any of them, however many there are; nor is it known which they were. Main
// thread; never blocks.
class TFolderWatch {
 public:
  TFolderWatch();
  ~TFolderWatch();
  TFolderWatch(const TFolderWatch&) = delete;
  TFolderWatch& operator=(const TFolderWatch&) = delete;

  // The folder may be another one than before; it is to be listed anew. Comes too when more has happened than
  // the system keeps, and a last time when the folder itself was removed or got another name. It may call
  // Watch.
  std::function<void()> OnChange;

  // These from now on and no others; null for none.
  void Watch(std::shared_ptr<TFolderChanges> changes);

 private:
  class TImpl;
  std::unique_ptr<TImpl> FImpl;
};
