// A window: a plain class with its controls as members and its event handlers as methods.
//
// Window objects live as long as the program. Loading one sets every control back to the state it
// was built with and then runs Load; so closing a window and opening it again is a reset.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "toolkit/control.h"
#include "toolkit/layout.h"

namespace fathomline {

class Desktop;
class Timer;

// A logical pixel is fifteen twips.
inline constexpr int kTwipsPerPixel = 15;

// Twips. A child window stands in the main window's area, any other
// on the screen.
struct WindowPlace {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const WindowPlace&) const = default;
};

enum class WindowStyle : std::uint8_t { Main, Child, Dialog };
enum class WindowState : std::uint8_t { Normal, Minimised, Maximised };

// Why a window is to close: by its close box, by the program, or because the program ends.
enum class CloseReason : std::uint8_t { User, Program, Ending };

struct WindowDesign {
  std::string name;  // the class, such as "frmStatistics"
  int index = 0;     // the system number; 0 where there is one window for all
  std::string caption = {};
  WindowPlace place = {};
  WindowStyle style = WindowStyle::Child;
  bool resizable = true;
  int part = 0;  // tells several windows of one class and system apart
};

class Window {
 public:
  Window(Desktop& desktop, WindowDesign design);
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  Desktop& OwningDesktop() const { return desktop_; }
  const std::string& Name() const { return design_.name; }
  int Index() const { return design_.index; }
  int Part() const { return design_.part; }
  // Unique among the windows: "frmStatistics-1", "frmTimeSeriesSNR-1-3", "frmNewWindow".
  std::string FullName() const;
  WindowStyle Style() const { return design_.style; }
  bool Resizable() const { return design_.resizable; }
  const std::vector<Control*>& Controls() const { return controls_; }

  bool Loaded() const { return loaded_; }
  // Grows with every load.
  std::uint64_t Loads() const { return loads_; }
  bool Visible() const { return visible_; }
  // Why it has been closed the last time, or is being.
  CloseReason ClosedBy() const { return closedBy_; }
  // Grows when the window is brought forward: the front window has the highest.
  std::uint64_t FrontOrder() const { return frontOrder_; }

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption);
  WindowState State() const { return state_; }
  void SetState(WindowState state);
  // A colour for its icon; none: the program's own.
  std::optional<Colour> IconColour() const { return iconColour_; }
  void SetIconColour(std::optional<Colour> colour);
  // Grows with a change of caption, state or icon.
  std::uint64_t Revision() const { return revision_; }

  // The place in normal state. Set by the program it runs no handler.
  const WindowPlace& Place() const { return place_; }
  void SetPlace(const WindowPlace& place);
  // The one that it is built with.
  const WindowPlace& DesignPlace() const { return design_.place; }
  // Grows when the program moves the window.
  std::uint64_t PlaceRevision() const { return placeRevision_; }

  const Layout& Content() const { return content_; }
  std::uint64_t ContentRevision() const { return contentRevision_; }

  // The same as the desktop's own.
  void Show();
  void Hide();
  bool Close(CloseReason reason = CloseReason::Program);

  // Somebody is about to look: write what is due.
  virtual void Refresh() {}

  // Every user action and every tick enters here. Nothing happens while the window is not loaded.
  // A fault goes to the desktop's handler and ends the action.
  void Act(const std::function<void()>& action);
  // The number of actions of this window on the stack.
  int Depth() const { return depth_; }
  // An action on a control: moves the focus there first, which the control that has it may refuse.
  // Nothing happens where the control is hidden or disabled.
  void UserAct(Control& control, const std::function<void()>& action);
  // Asks the control that has the focus. False: it stays there. The cancel button is never refused.
  bool FocusTo(Control& control);
  const Control* Focus() const { return focus_; }

  // What the user does to the window itself.
  void UserClose();
  void UserPlace(const WindowPlace& place);
  void UserState(WindowState state);
  // Files are dropped on it. Only a window with a handler takes them.
  void UserDrop(const std::vector<std::string>& paths);
  std::function<void(const std::vector<std::string>& paths)> onDrop;

  // Writes what the window shows as UTF-8 text, cells separated by tabs, in the order in which the
  // controls were built:
  //   label  name   text                          for each label shown
  //   grid   name   rows  columns                 for each grid shown, then its rows, one per line
  //   series chart  index  title  count           for each series of the charts shown, then per
  //                                               point a line: x, y and, of a coloured point, its
  //                                               colour; y of a null point is empty, x of a Gantt
  //                                               bar is "start/end"
  // Numbers are written in digits that read back exactly; a control character within a text
  // becomes a blank. With the words, a window's caption and all texts that stand in it whatever it
  // is fed with come before that, shown or not:
  //   words  what  text  text ...                 what: "caption", "layout", or the name of the
  //                                               control, with "tip", "axes", "note", "keys" (of
  //                                               a menu entry) or "heads" (the tips of a grid's
  //                                               heads) behind it
  enum class Texts : std::uint8_t { Shown, WithWords };
  void Write(std::ostream& out, Texts texts = Texts::Shown);

 protected:
  // Run while the window loads, with all controls in their design state.
  virtual void Load() {}
  // False refuses. It may ask; the window may have been closed from elsewhere when it returns.
  virtual bool QueryUnload(CloseReason /*reason*/) { return true; }
  virtual void Unload() {}
  // Run when the window is first shown and when the user has given it another size.
  virtual void Resize() {}

  void SetContent(Layout content);

 private:
  friend class Control;
  friend class Desktop;
  friend class Timer;

  void Add(Control& control) { controls_.push_back(&control); }
  void Remove(Control& control);
  void ResetToDesign();

  Desktop& desktop_;
  WindowDesign design_;
  std::vector<Control*> controls_;
  std::vector<Timer*> timers_;
  Layout content_;
  std::string caption_;
  WindowPlace place_;
  std::optional<Colour> iconColour_;
  Control* focus_ = nullptr;
  std::uint64_t revision_ = 0;
  std::uint64_t placeRevision_ = 0;
  std::uint64_t contentRevision_ = 0;
  std::uint64_t frontOrder_ = 0;
  std::uint64_t loads_ = 0;
  int depth_ = 0;
  WindowState state_ = WindowState::Normal;
  CloseReason closedBy_ = CloseReason::Program;
  bool loaded_ = false;
  bool visible_ = false;
  bool sized_ = false;
  bool asking_ = false;
  bool unloading_ = false;
  bool leaving_ = false;
};

}  // namespace fathomline
