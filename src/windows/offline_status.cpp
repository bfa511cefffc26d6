#include "windows/offline_status.h"

#include "decoding/coordinate_text.h"

namespace fathomline {
namespace {

constexpr WindowPlace kPlace{0, 0, 10000, 3000};

}  // namespace

frmOfflineStatus::frmOfflineStatus(Desktop& desktop, const Records& records, const Clock& clock)
    : Window(desktop, {.name = "frmOfflineStatus",
                       .caption = "Fathomline-  OFFLINE STATUS",
                       .place = kPlace,
                       .resizable = false}),
      records_(records),
      clock_(clock) {
  Timer1.onTick = [this] { Tick(); };
  SetContent(Layout::Column(
      {Layout::Form({{"Input File : ", lblFileName},
                     {"Status : ", lblStatus},
                     {"Started at : ", lblStartTime}}),
       Layout::Row({lblTimeHeader, lblCurrentTime, Layout::Words("Processing time :"),
                    lblProcessingTime, lblPause, Layout::Space()}),
       prgRead, Layout::Row({lblReason, cmdReason})}));
}

void frmOfflineStatus::Refresh() {
  const WhyNothing why = onAskWhy ? onAskWhy() : WhyNothing();
  lblReason.SetText(why.text);
  lblReason.SetToolTip(why.text);
  lblReason.SetVisible(!why.text.empty());
  cmdReason.SetText(why.Button());
  cmdReason.SetVisible(!why.text.empty());
}

void frmOfflineStatus::Load() {
  SetPlace(kPlace);
  const std::string& file = records_.CommSetups[1].OfflineFile;
  if (!file.empty()) lblFileName.SetText(file);
}

// The size is fixed; only the corner is the user's.
void frmOfflineStatus::Resize() {
  SetPlace({Place().left, Place().top, kPlace.width, kPlace.height});
}

void frmOfflineStatus::ShowStatus(std::string_view text, Colour colour) {
  lblStatus.SetText(text);
  lblStatus.SetColour(colour);
}

void frmOfflineStatus::ShowStart() {
  constexpr std::string_view kMoment = "hh:mm:ss dd mmm yyyy";
  lblStartTime.SetText(FormatDateTime(records_.OfflineStartTime, kMoment));
  lblCurrentTime.SetText(FormatDateTime(clock_.NowLocal(), kMoment));
  lblProcessingTime.SetText("00:00:00");
  prgRead.SetShare(0);
  Timer1.SetEnabled(true);
}

void frmOfflineStatus::ShowProgress(std::uint64_t position, std::uint64_t size) {
  if (size == 0) return;
  const double share = static_cast<double>(position) / static_cast<double>(size);
  prgRead.SetShare(static_cast<int>(share * 1000.0));
}

void frmOfflineStatus::Tick() {
  const DateTime now = clock_.NowLocal();
  lblCurrentTime.SetText(TimeOfDayText(now));
  const auto seconds = static_cast<double>(DifferenceInSeconds(records_.OfflineStartTime, now));
  lblProcessingTime.SetText(FormatSecondsOfDay(seconds, 0));
}

}  // namespace fathomline
