// Tells when what one folder holds has changed: an entry came, went, got another name, length, time or
// attributes. What lies deeper is not looked at.
#pragma once

#include <QString>

#include <functional>
#include <memory>

// Changes are joined: the first one is told after a fifth of a second, with all that came meanwhile, and in
// between nothing is done for any of them, however many there are; nor is it known which they were. Main
// thread.
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

  // This folder from now on and no other; empty for none. What has changed before is forgotten. False if the
  // folder can't be watched: it is not there or its file system does not tell.
  bool Watch(const QString& folder);

 private:
  class TImpl;
  std::unique_ptr<TImpl> FImpl;
};
