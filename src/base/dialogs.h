// Message boxes and file dialogs, behind a seam: the desktop shows them, a test scripts the
// answers, the batch tool prints them.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace fathomline {

// The title of a box that names none of its own.
inline constexpr const char* kProgramTitle = "Fathomline";

enum class BoxIcon { None, Information, Question, Exclamation, Critical };
enum class BoxButtons { Ok, YesNo };
enum class Answer { Ok, Yes, No };

struct MessageBox {
  std::string text;  // plain text, UTF-8
  std::string title = kProgramTitle;
  BoxIcon icon = BoxIcon::None;
  BoxButtons buttons = BoxButtons::Ok;
  bool defaultNo = false;
  // Carries "Do not show this message again in this session", which then holds for every box of
  // the same title and kind. For boxes that a line can raise again and again.
  bool canBeSilenced = false;
  std::string kind = {};
};

struct FileQuestion {
  std::string title;
  std::string filter;  // "Description|*.ext" pairs, as the file dialogs write them
  std::string defaultExtension = {};
  std::string folder = {};
  bool save = false;  // with the question before overwriting
};

// Where the help is opened: at its contents, or at the line to search in.
enum class HelpStart { Contents, Search };

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  // Shows a box and waits for its answer. Events of other sources go on meanwhile.
  virtual Answer Ask(const MessageBox& box) = 0;
  // The chosen path, or nothing when cancelled.
  virtual std::optional<std::string> ChooseFile(const FileQuestion& question) = 0;
  virtual void Beep() = 0;

  void Say(std::string text) { Ask({.text = std::move(text)}); }
};

}  // namespace fathomline
