// What keeps a list and its objects alive while one of its events is told, so that a handler may do anything:
// delete rows, groups and columns, clear, sort, replace handlers, open a modal dialog, close the form.
//
// The rule for whoever tells an event, or calls something that may tell one:
//
//   1. An event is told by Tell(life, OnEvent, arguments...), never called. False: the list itself is gone;
//      return at once and touch neither this nor any field.
//   2. Objects that are needed after an event (a row, group or column) are kept by pointer, and a TEventScope
//      stands from before the event until they are no longer needed. After each event: return if ListGone(),
//      leave the object alone if it is Gone().
//   3. Indexes do not outlive an event: ask the object for its Index() again. A loop over rows that tells
//      events runs over a copy of their pointers.
//   4. An object that is deleted leaves every collection at once, is marked gone and goes to Bury, which
//   frees
//      it when the outermost scope ends, or now if none is open. Its destructor tells nothing and calls no
//      other object of the list.
//   5. The list's destructor buries its collections and inner objects that may be at work up the stack.
//   6. Whatever cleans up as a block is left (brackets, rollbacks) asks ListGone() before it touches the
//   list.
#pragma once

#include <memory>
#include <utility>
#include <vector>

// One per list, shared by its parts and by the scopes that are open, and so outlives a list that is destroyed
// in one of its own events. Main thread.
class TListLife {
 public:
  TListLife() = default;
  TListLife(const TListLife&) = delete;
  TListLife& operator=(const TListLife&) = delete;
  ~TListLife() { Free(); }

  // The list's destructor has come to its end.
  void End() { FGone = true; }
  [[nodiscard]] bool Gone() const { return FGone; }
  // An event is being told.
  [[nodiscard]] bool Telling() const { return FDepth > 0; }

  template <typename T>
  void Bury(std::unique_ptr<T> object) {
    if (object == nullptr) return;
    FBuried.emplace_back(object.release(), [](void* buried) { delete static_cast<T*>(buried); });
    if (!Telling()) Free();
  }

 private:
  friend class TEventScope;

  // What is freed may bury in turn.
  void Free() {
    while (!FBuried.empty())
      std::exchange(FBuried, {}).clear();
  }

  // With the deleter of its class each, as rows, groups, columns and whole collections lie here together.
  std::vector<std::unique_ptr<void, void (*)(void*)>> FBuried;
  // Open scopes, nested ones counted each.
  int FDepth = 0;
  bool FGone = false;
};

using TListLifePtr = std::shared_ptr<TListLife>;

// As long as one stands, nothing of the list is freed. Scopes nest.
class TEventScope {
 public:
  explicit TEventScope(TListLifePtr life) : FLife(std::move(life)) { ++FLife->FDepth; }
  ~TEventScope() {
    if (--FLife->FDepth == 0) FLife->Free();
  }
  TEventScope(const TEventScope&) = delete;
  TEventScope& operator=(const TEventScope&) = delete;

  [[nodiscard]] bool ListGone() const { return FLife->Gone(); }

 private:
  TListLifePtr FLife;
};

// Tells an event; an unassigned one is told to nobody. False if the list is gone. The handler stays whole
// while it runs, even if it is replaced or goes with the list.
template <typename Event, typename... Arguments>
[[nodiscard]] bool Tell(const TListLifePtr& life, const Event& event, Arguments&&... arguments) {
  if (!event) return true;
  const TEventScope scope(life);
  const Event running = event;
  running(std::forward<Arguments>(arguments)...);
  return !scope.ListGone();
}
