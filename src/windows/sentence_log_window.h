// frmSentenceLog: the latest lines of all systems, those of them that its user wants to see.
#pragma once

#include <chrono>
#include <optional>
#include <set>
#include <string>

#include "base/clock.h"
#include "base/settings.h"
#include "records/records.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/long_list.h"
#include "toolkit/window.h"
#include "watch/filtered_log.h"
#include "watch/watch.h"

namespace fathomline {

class frmSentenceLog : public Window, private LongListSource {
 public:
  frmSentenceLog(Desktop& desktop, const Records& records, Watch& watch, const Clock& clock,
                 SettingsStore& settings);

  void Refresh() override;

  Choices cmbSystem{*this, "cmbSystem", ChoicesKind::Combo};
  Choices cmbTalker{*this, "cmbTalker", ChoicesKind::Combo};
  Choices cmbSentence{*this, "cmbSentence", ChoicesKind::Combo};
  Choices cmbChecksum{*this, "cmbChecksum", ChoicesKind::Combo, {"all", "right", "wrong", "none"}};
  TextBox txtText{*this, "txtText"};
  TextBox txtFind{*this, "txtFind"};
  Button cmdPrevious{*this, "cmdPrevious", "Pre&vious"};
  Button cmdNext{*this, "cmdNext", "&Next"};
  LongList lstLines;
  Label lblShown{*this, "lblShown"};
  Button cmdPause{*this, "cmdPause", "&Pause"};
  Button cmdClear{*this, "cmdClear", "Clea&r"};
  Button cmdCopy{*this, "cmdCopy", "&Copy"};
  Button cmdSave{*this, "cmdSave", "S&ave As..."};

 protected:
  void Load() override;
  void Unload() override;

 private:
  int Rows() const override { return filtered_ ? filtered_->Count() : 0; }
  std::uint64_t Gone() const override { return filtered_ ? filtered_->Gone() : 0; }
  std::string Cell(int row, int column) const override;

  void ApplyFilter();
  void ShowAddresses();
  void ShowCount();
  void Find(bool backwards);
  void Pause();
  void Copy();
  void Save();
  // The rows that are selected, or all: as sentences one behind the other.
  std::string Sentences(bool selected, std::string_view lineEnd) const;
  std::string ArrivalText(SentenceLog::Time arrival) const;

  const Records& records_;
  Watch& watch_;
  const Clock& clock_;
  SettingsStore& settings_;
  std::optional<FilteredLog> filtered_;
  std::uint64_t seenEnd_ = 0;
  std::uint64_t seenFirst_ = 0;
  std::size_t shownTalkers_ = 0;
  std::size_t shownSentences_ = 0;
  // A moment by both clocks.
  std::chrono::steady_clock::time_point steady_{};
  DateTime local_{};
};

}  // namespace fathomline
