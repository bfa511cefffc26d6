#include "setup/recording_dialog.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "setup/setup_values.h"
#include "toolkit/desktop.h"
#include "views/definitions.h"
#include "windows/source_marks.h"

namespace fathomline {
namespace {

constexpr WindowPlace kPlace{1500, 900, 10800, 9600};

struct ListColumn {
  std::string_view heading;
  int width;               // twips
  bool holdsText = false;  // no figures
};
constexpr auto kColumns = std::to_array<ListColumn>({{"Talker", 900, true},
                                                     {"Sentence", 1300, true},
                                                     {"Lines", 1200},
                                                     {"Lines/s", 1100},
                                                     {"Wrong checksum", 1600},
                                                     {"Analysed", 3300, true}});
enum Column { kTalker, kSentence, kLines, kRate, kWrong, kAnalysed };

std::string Count(std::int64_t lines) {
  return std::to_string(lines);
}

// "2 h 5 min", "3 min 20 s", "12 s".
std::string Duration(double seconds) {
  const auto whole = static_cast<std::int64_t>(std::llround(seconds));
  const std::int64_t minutes = whole / 60;
  const std::int64_t hours = minutes / 60;
  if (hours >= 48) return Count(hours / 24) + " d " + Count(hours % 24) + " h";
  if (hours > 0) return Count(hours) + " h " + Count(minutes % 60) + " min";
  if (minutes > 0) return Count(minutes) + " min " + Count(whole % 60) + " s";
  return Count(whole) + " s";
}

std::string SpanText(const std::optional<RecordedSpan>& span) {
  if (!span) return "The sentences tell no time.";
  constexpr std::string_view kTime = "hh:nn:ss";
  const std::string from = FormatDateTime(span->from, kTime);
  const std::string to = FormatDateTime(span->to, kTime);
  std::string text;
  if (span->dated) {
    constexpr std::string_view kDate = "dd mmm yyyy ";
    const std::string first = FormatDateTime(span->from, kDate);
    const std::string last = FormatDateTime(span->to, kDate);
    text = first + from + " to " + (first == last ? "" : last) + to + " UTC";
  } else {
    text = from + " to " + to + " UTC, without a date";
  }
  return text + " (" + Duration(span->Seconds()) + ")";
}

std::string LinesText(const RecordingContents& contents) {
  std::string text = Count(contents.lines) + (contents.lines == 1 ? " line" : " lines");
  text += ", " + Count(contents.wrongChecksums) + " with a wrong checksum";
  if (contents.withoutSentence > 0) {
    text += ", " + Count(contents.withoutSentence) + " in which no sentence begins";
  }
  return text;
}

}  // namespace

frmOpenRecording::frmOpenRecording(Desktop& desktop)
    : Window(desktop, {.name = "frmOpenRecording",
                       .caption = "Open Recording",
                       .place = kPlace,
                       .style = WindowStyle::Dialog}),
      fgSentences(*this, "fgSentences", 1, static_cast<int>(kColumns.size()), {1, 0}) {
  DesignList(fgSentences, kColumns, DefinedTable::Recording);
  std::vector<Layout> boxes;
  for (int box = chkSentence.First(); box <= chkSentence.Last(); ++box) {
    chkSentence(box).SetVisible(false);
    chkSentence(box).onClick = [this, box] { TickBox(box); };
    boxes.emplace_back(chkSentence(box));
  }
  chkStepsBack.SetToolTip(
      "Without a sentence that tells the date, every step back of the time is taken for midnight "
      "and adds a day. Ticked, only one of more than twelve hours is.");
  cmdOk.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(CloseReason::User); };
  SetContent(
      Layout::Column({lblPath, prgRead, lblSpan, lblLines, fgSentences,
                      Layout::Box(frameAnalysed, Layout::Table(3, std::move(boxes))), lblNote,
                      Layout::Form({{"&Name :", txtName}}), chkTestCheckSum, chkStepsBack,
                      lblWarning, Layout::Row({Layout::Space(), cmdOk, cmdCancel})}));
}

void frmOpenRecording::Open(const std::string& path, const std::string& warning) {
  auto scan = std::make_unique<RecordingScan>(path);
  accepted_ = true;  // what stands open makes way, and is not cancelled
  Close();
  accepted_ = false;
  path_ = path;
  warning_ = warning;
  scan_ = std::move(scan);
  Show();
  OwningDesktop().Start(*this);
}

void frmOpenRecording::Load() {
  lblPath.SetText(path_);
  lblWarning.SetText(warning_);
  lblWarning.SetVisible(!warning_.empty());
  lblNote.SetVisible(false);
  chkStepsBack.SetVisible(false);
  cmdOk.SetEnabled(false);
  frameAnalysed.SetVisible(false);
  lblSpan.SetText("Looking through the recording...");
}

void frmOpenRecording::Unload() {
  OwningDesktop().Stop(*this);
  scan_.reset();
  if (!accepted_ && onCancel) onCancel();
}

bool frmOpenRecording::RunSlice(std::chrono::steady_clock::time_point until) {
  bool more = false;
  try {
    more = scan_->Continue(until);
  } catch (const Fault&) {
    Close();
    throw;
  }
  prgRead.SetShare(static_cast<int>(scan_->Share() * 1000.0));
  lblLines.SetText(Count(scan_->Lines()) + " lines");
  if (more) return true;
  OwningDesktop().Stop(*this);
  contents_ = scan_->Contents();
  scan_.reset();
  ShowContents();
  return false;
}

void frmOpenRecording::ShowContents() {
  choice_ = ProposeFor(contents_, path_);
  boxes_ = Analysable(contents_);
  prgRead.SetVisible(false);
  lblSpan.SetText(SpanText(contents_.span));
  lblLines.SetText(LinesText(contents_));
  txtName.SetText(choice_.name);
  chkTestCheckSum.SetChecked(choice_.checksumTest);
  chkStepsBack.SetChecked(true);
  frameAnalysed.SetVisible(!boxes_.empty());
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    CheckBox& box = chkSentence(static_cast<int>(i) + 1);
    box.SetText(ToText(boxes_[i]) + ": " + std::string(WhatItTells(boxes_[i])));
    box.SetVisible(true);
  }
  ShowSentences();
  std::string left;
  for (const SentenceType type : boxes_) {
    if (choice_.sentences[type]) continue;
    const bool excluded = !ExclusionsOf(type, choice_.sentences).empty();
    if (!excluded) left += (left.empty() ? "" : ", ") + ToText(type);
  }
  if (boxes_.empty()) {
    lblNote.SetText("There is no sentence in it that can be analysed.");
  } else if (!left.empty()) {
    lblNote.SetText("No more than " + PlainText(kUsedMessageRows) +
                    " sentences can be analysed. Not ticked: " + left + ".");
  }
  lblNote.SetVisible(!lblNote.Text().empty());
}

void frmOpenRecording::ShowSentences() {
  const double seconds = contents_.span ? contents_.span->Seconds() : 0.0;
  fgSentences.SetRows(static_cast<int>(contents_.sentences.size()) + 1);
  for (int row = 1; const RecordedSentence& sentence : contents_.sentences) {
    fgSentences.Set(row, kTalker, sentence.address.Talker());
    fgSentences.Set(row, kSentence, sentence.address.Sentence());
    fgSentences.Set(row, kLines, Count(sentence.lines));
    if (seconds > 0.0) {
      fgSentences.Set(row, kRate, RateText(static_cast<double>(sentence.lines) / seconds));
    }
    if (sentence.unchecked < sentence.lines) {
      fgSentences.Set(row, kWrong, Count(sentence.wrong));
    } else {
      fgSentences.Set(row, kWrong, "no checksum");
    }
    ++row;
  }
  ShowTicks();
}

void frmOpenRecording::ShowTicks() {
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    chkSentence(static_cast<int>(i) + 1).SetChecked(choice_.sentences[boxes_[i]]);
  }
  for (int row = 1; const RecordedSentence& sentence : contents_.sentences) {
    std::string analysed = "cannot be";
    if (std::find(boxes_.begin(), boxes_.end(), sentence.type) != boxes_.end()) {
      analysed = choice_.sentences[sentence.type] ? "yes, as " + ToText(sentence.type) : "no";
    }
    fgSentences.Set(row++, kAnalysed, analysed);
  }
  cmdOk.SetEnabled(!choice_.sentences.Ticked().empty());
  const std::int64_t steps = StepsBack(contents_, choice_.sentences);
  chkStepsBack.SetText("The time steps back " + Count(steps) + (steps == 1 ? " time" : " times") +
                       ": &do not take that for midnight");
  chkStepsBack.SetVisible(steps > 0);
}

void frmOpenRecording::TickBox(int box) {
  const SentenceType type = boxes_.at(static_cast<std::size_t>(box - 1));
  const std::string note = Tick(choice_.sentences, type, chkSentence(box).Checked());
  ShowTicks();
  lblNote.SetText(note);
  lblNote.SetVisible(!note.empty());
}

void frmOpenRecording::Accept() {
  if (!CanBeStored(txtName.Text())) {
    OwningDesktop().Ask({.text = "The name has a character that the setup file cannot hold.",
                         .icon = BoxIcon::Exclamation});
    return;
  }
  choice_.name = txtName.Text();
  choice_.checksumTest = chkTestCheckSum.Checked();
  choice_.stepsBackStay = chkStepsBack.Visible() && chkStepsBack.Checked();
  accepted_ = true;
  const std::string path = path_;
  const RecordingChoice choice = choice_;
  Close();
  if (onOpen) onOpen(path, choice);
}

}  // namespace fathomline
