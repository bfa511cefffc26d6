// How the state of a source is shown, in its window and in the status bar: by a shape and a word,
// with a colour beside them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "records/records.h"
#include "toolkit/desktop.h"
#include "watch/link_desk.h"
#include "watch/watch.h"
#include "windows/main_window.h"

namespace fathomline {

struct Mark {
  std::string_view text;  // "● alive"
  Colour colour;
};

Mark MarkOf(Liveliness state);

// What there is to say of a system at one moment.
struct SourceReading {
  LinkCondition link;
  SourceActivity::Source source;
  Mark mark;
  std::string condition;  // "connected", "Connection refused; try 3 in 5 s"
  std::string lastLine;   // "0.4 s ago"; empty before the first one
};

// A source is no livelier than its link. One that was opened and has not sent anything is judged by
// the time since then.
SourceReading ReadSource(const Records& records, LinkDesk& links, const SourceActivity& activity,
                         int system, SourceActivity::Time now);

// "0.4 s", or "0 s" without tenths, "12 s", "3 min", "2 h".
std::string AgeText(double seconds, bool tenths = true);
// "1250", "10.0", "0.20", "0.017".
std::string RateText(double rate);

// The marks at the right end of the status bar, one per enabled system. Renewed once a second, when
// the counts of the activity are taken too.
class SourceMarks {
 public:
  SourceMarks(const Records& records, Desktop& desktop, LinkDesk& links, Watch& watch,
              frmMain& mainWindow);

  void Renew();

 private:
  const Records& records_;
  Desktop& desktop_;
  LinkDesk& links_;
  Watch& watch_;
  frmMain& mainWindow_;
};

}  // namespace fathomline
