#include "platform/Messages.h"

#include "fixtures/SystemTest.h"

#include <atomic>
#include <thread>

namespace {

enum : unsigned { kFirst = 8045, kSecond = 8046, kLast = 8047, kUnknown = 9999 };

// Pumps until the flag is set, with a bound so that a lost message fails the test.
bool PumpUntil(const bool& done) {
  QElapsedTimer timer;
  timer.start();
  while (!done && timer.elapsed() < 20000)
    PumpMessages();
  return done;
}

TEST(Messages, PostedMessagesArriveInOrderOnTheWindowsThread) {
  constexpr quintptr kCount = 2000;
  const auto windowThread = std::this_thread::get_id();
  std::vector<quintptr> seen;
  bool onWindowThread = true;
  bool done = false;
  TMessageWindow window{{kFirst,
                         [&](const TMessage& message) {
                           seen.push_back(message.WParam);
                           onWindowThread &= std::this_thread::get_id() == windowThread;
                         }},
                        {kLast, [&](const TMessage& message) { done = message.LParam == -7; }}};
  std::thread sender([&] {
    for (quintptr i = 0; i < kCount; ++i) {
      PostMessage(&window, kFirst, i, 0);
      PostMessage(&window, kUnknown, i, 0);
    }
    PostMessage(&window, kLast, 0, -7);
  });
  EXPECT_TRUE(PumpUntil(done));
  sender.join();
  EXPECT_TRUE(onWindowThread);
  ASSERT_EQ(seen.size(), kCount);
  EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
}

// By the window's own name and by a line to it.
TEST(Messages, SendWaitsUntilTheHandlerHasEnded) {
  std::vector<int> order;  // written by both threads, never at once
  bool done = false;
  TMessageWindow window{{kFirst, [&](const TMessage&) { order.push_back(1); }},
                        {kSecond,
                         [&](const TMessage& message) {
                           PumpMessages();
                           order.push_back(static_cast<int>(message.WParam));
                         }},
                        {kLast, [&](const TMessage&) { done = true; }}};
  TMessageLine line(&window);
  std::thread sender([&] {
    PostMessage(&window, kFirst, 0, 0);
    SendMessage(&window, kSecond, 2, 0);
    order.push_back(3);
    SendMessage(&window, kUnknown, 0, 0);
    line.Send(kSecond, 4, 0);
    order.push_back(5);
    line.Post(kLast, 0, 0);
  });
  EXPECT_TRUE(PumpUntil(done));
  sender.join();
  EXPECT_THAT(order, ElementsAre(1, 2, 3, 4, 5));
}

TEST(Messages, OnTheWindowsOwnThreadASendIsAPlainCallAndAPumpInAHandlerGoesOn) {
  std::vector<int> order;
  TMessageWindow window{
      {kFirst,
       [&](const TMessage&) {
         order.push_back(1);
         PumpMessages();
         order.push_back(5);
       }},
      {kSecond, [&](const TMessage& message) { order.push_back(static_cast<int>(message.WParam)); }}};
  PostMessage(&window, kFirst, 0, 0);
  PostMessage(&window, kSecond, 3, 0);
  PostMessage(&window, kSecond, 4, 0);
  EXPECT_TRUE(order.empty()) << "posting runs nothing";
  SendMessage(&window, kSecond, 2, 0);
  EXPECT_THAT(order, ElementsAre(2));
  PumpMessages();
  EXPECT_THAT(order, ElementsAre(2, 1, 3, 4, 5));
}

TEST(Messages, NoWindowAndAWindowThatIsGoneDropTheMessage) {
  PostMessage(nullptr, kFirst, 0, 0);
  SendMessage(nullptr, kFirst, 0, 0);
  int handled = 0;
  auto window = std::make_unique<TMessageWindow>(
      std::initializer_list<std::pair<const unsigned, TMessageWindow::THandler>>{
          {kFirst, [&](const TMessage&) { ++handled; }}});
  TMessageWindow* const gone = window.get();
  PostMessage(gone, kFirst, 0, 0);
  window.reset();
  std::thread([gone] {
    PostMessage(gone, kFirst, 0, 0);
    SendMessage(gone, kFirst, 0, 0);
  }).join();
  PumpMessages();
  EXPECT_EQ(handled, 0);
}

// A sender that waits is let go, whether or not what it sent was in the queue before, and nothing of the line
// is handled any more.
TEST(Messages, AClosedLineTakesBackWhatIsOnItsWay) {
  std::vector<quintptr> handled;
  TMessageWindow window{{kFirst, [&](const TMessage& message) { handled.push_back(message.WParam); }}};
  TMessageLine line(&window);
  line.Post(kFirst, 1, 0);
  PumpMessages();
  PostMessage(&window, kFirst, 2, 0);
  line.Post(kFirst, 3, 0);
  std::atomic<bool> begun{false};
  std::thread sender([&] {
    begun = true;
    line.Send(kFirst, 4, 0);
    line.Post(kFirst, 5, 0);
    line.Send(kFirst, 6, 0);
  });
  while (!begun)
    std::this_thread::yield();
  line.Close();
  sender.join();
  line.Close();
  PumpMessages();
  EXPECT_THAT(handled, ElementsAre(1, 2));
}

}  // namespace
