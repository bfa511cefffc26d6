// The desktop: the windows that there are, and the event pump that serves them.
//
// The same for every face. It holds the windows' rules: loading, showing, closing, asking; and what
// runs beside them: timers and tasks.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/dialogs.h"
#include "base/fault.h"
#include "toolkit/face.h"
#include "toolkit/task.h"
#include "toolkit/window.h"

namespace fathomline {

class Timer;

enum class Arrangement : std::uint8_t { Cascade, TileHorizontally, TileVertically, Icons };

// A slice of a task lasts no longer.
inline constexpr std::chrono::milliseconds kLongestSlice{5};

// Marks something as being on the stack as long as it lives.
class OnStack {
 public:
  explicit OnStack(bool& flag) : flag_(flag) { flag_ = true; }
  ~OnStack() { flag_ = false; }
  OnStack(const OnStack&) = delete;
  OnStack& operator=(const OnStack&) = delete;

 private:
  bool& flag_;
};

class Desktop : public Dialogs {
 public:
  explicit Desktop(Face& face);
  ~Desktop() override;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  // All windows, in the order in which they were built.
  const std::vector<Window*>& Windows() const { return windows_; }

  // Loads it where it is not loaded. A fault in its Load leaves it unloaded and passes on.
  void Load(Window& window);
  // Loads it where need be, shows it and brings it forward.
  void Show(Window& window);
  void Hide(Window& window);
  // Asks the window and unloads it. Returns whether it is closed then.
  bool Close(Window& window, CloseReason reason = CloseReason::Program);
  // Brings it forward, as it is.
  void Raise(Window& window) { window.frontOrder_ = ++frontOrder_; }
  // The child windows that are shown, those in front last.
  std::vector<Window*> ShownChildren() const;
  // Shows it and returns when it has been closed or hidden. Other windows take no input meanwhile.
  void ShowModal(Window& window);
  // The child window that stands behind all others comes in front, so that repeating it visits each
  // of them; those that are minimised stay.
  void RaiseNext();
  // The user has closed this child window, or hidden it so. It still says where it stood.
  std::function<void(Window& window)> onUserClosed;
  // The window that alone takes input, if any.
  Window* Modal() const { return modal_.empty() ? nullptr : modal_.back(); }

  // The room that child windows have, in twips; the face keeps it.
  struct Area {
    int width = 13000;
    int height = 11000;
  };
  const Area& ChildArea() const { return childArea_; }
  void SetChildArea(Area area) { childArea_ = area; }
  // Places the visible child windows that are not minimised. Fixed ones keep their size.
  void Arrange(Arrangement arrangement);

  Answer Ask(const MessageBox& box) override;
  // From now on each box counts as answered with what would go on: Ok, or its default.
  void StopAsking() { asks_ = false; }
  std::optional<std::string> ChooseFile(const FileQuestion& question) override;
  void Beep() override { face_.Beep(); }
  void CopyText(std::string_view text) { face_.CopyText(text); }
  void ShowPageSetup() { face_.ShowPageSetup(); }
  void SetLook(LookChoice choice) { face_.SetLook(choice); }
  bool ShowHelp(HelpStart start) { return face_.ShowHelp(start); }
  bool OpenDocument(const std::string& path) { return face_.OpenDocument(path); }

  // What a turn has left: whether something has more to do at once, and else when the next timer
  // is due.
  struct Outcome {
    bool busy = false;
    std::optional<std::chrono::steady_clock::time_point> nextDue;
  };
  // One turn: the timers that are due, then one slice of each task.
  Outcome Turn();
  // Lets the face turn until the condition holds or the program is to end.
  void RunUntil(const std::function<bool()>& done);
  void Start(Task& task);
  void Stop(Task& task);
  std::chrono::steady_clock::time_point Now() const { return face_.Now(); }
  // When the present, or latest, slice of a task began: the time of what it does, to a few
  // milliseconds, for who asks so often that a look at the clock would cost too much.
  std::chrono::steady_clock::time_point SliceTime() const { return sliceTime_; }

  // Ends every RunUntil.
  void Quit() { quitting_ = true; }
  bool Quitting() const { return quitting_; }

  // A fault that no handler of the program has caught, with the window in whose action it was.
  // Without a handler here a message box shows it.
  std::function<void(const Fault& fault, Window* window)> onFault;
  void Report(const Fault& fault, Window* window);

 private:
  friend class Timer;
  friend class Window;

  void Add(Window& window) { windows_.push_back(&window); }
  void Remove(Window& window);
  void Add(Timer& timer) { timers_.push_back(&timer); }
  void Remove(Timer& timer);
  std::vector<Window*> WindowsToArrange() const;

  Face& face_;
  std::vector<Window*> windows_;
  std::vector<Window*> modal_;
  std::vector<Timer*> timers_;
  std::vector<Task*> tasks_;
  std::set<std::pair<std::string, std::string>> silenced_;
  Area childArea_;
  std::chrono::steady_clock::time_point sliceTime_{};
  std::uint64_t frontOrder_ = 0;
  int turns_ = 0;
  bool asks_ = true;
  bool quitting_ = false;
};

}  // namespace fathomline
