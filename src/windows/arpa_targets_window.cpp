#include "windows/arpa_targets_window.h"

#include <array>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "decoding/coordinate_text.h"
#include "views/definitions.h"

namespace fathomline {
namespace {

constexpr std::array kFeeds = {SentenceType::TTM};
constexpr WindowPlace kDefaultPlace{0, 0, 15300, 5500};

// The number of rows is a 16-bit integer, and it is the target number and two.
constexpr int kHighestTarget = std::numeric_limits<std::int16_t>::max() - 2;

using Cell = std::string (*)(const ARPATarget& target);

std::string Number(const ARPATarget& target) {
  return PlainText(target.latest.TargetNumber);
}
template <auto Member>
std::string Text(const ARPATarget& target) {
  return target.latest.*Member;
}
template <auto Member>
std::string Letter(const ARPATarget& target) {
  return FromLatin1({&(target.latest.*Member), 1});
}
template <auto Member>
std::string Value(const ARPATarget& target) {
  return ValueText(target.latest.*Member);
}
template <auto Member>
std::string Time(const ARPATarget& target) {
  return TimeOfDayText(target.*Member);
}

struct ListColumn {
  std::string_view heading;
  Cell text;
  int width = 0;           // twips; 0 leaves it to the desktop
  bool holdsText = false;  // no figures
};

constexpr auto kColumns = std::to_array<ListColumn>({
    {"No", Number, 400},
    {"Name", Text<&TTMRecord::Name>, 3200, true},
    {"Distance", Value<&TTMRecord::Distance>},
    {"Bearing", Value<&TTMRecord::Bearing>},
    {"T/R", Letter<&TTMRecord::BearingReference>, 400, true},
    {"Speed", Value<&TTMRecord::Speed>},
    {"Course", Value<&TTMRecord::Course>},
    {"T/R", Letter<&TTMRecord::CourseReference>, 400, true},
    {"CPA", Value<&TTMRecord::CPA>},
    {"TCPA", Value<&TTMRecord::TCPA>},
    {"Unit", Letter<&TTMRecord::Unit>, 0, true},
    {"Status", Letter<&TTMRecord::Status>, 600, true},
    {"Ref Target", Text<&TTMRecord::ReferenceTarget>, 0, true},
    {"First msg", Time<&ARPATarget::firstMessage>},
    {"Last msg", Time<&ARPATarget::lastMessage>},
});

}  // namespace

frmARPATargets::frmARPATargets(const ViewSurroundings& surroundings, int system)
    : SystemView(surroundings, system,
                 {.name = "frmARPATargets",
                  .caption = "ARPA Targets ",
                  .place = kDefaultPlace,
                  .placeKey = "ARPATargets",
                  .flag = WindowFlag::ARPATargets,
                  .feeds = kFeeds}),
      fgARPATargets(*this, "fgARPATargets", 1, static_cast<int>(kColumns.size()), {1, 0}) {
  DesignList(fgARPATargets, kColumns, DefinedTable::ARPA);
  fgARPATargets.SetSortable();
  SetContent(fgARPATargets);
}

void frmARPATargets::LoadView() {
  targets_.clear();
  dueRows_.clear();
}

void frmARPATargets::UpdateARPATargets(SentenceType type) {
  if (type != SentenceType::TTM) return;
  const TTMRecord& record = records_.Messages[Index()].TTM.Record;
  if (record.TargetNumber == NoValue) return;
  if (record.TargetNumber < 0) Raise(FaultNumber::OutOfRange);
  if (record.TargetNumber > kHighestTarget) Raise(FaultNumber::Overflow);

  const int row = record.TargetNumber + 1;
  if (row >= fgARPATargets.Rows()) fgARPATargets.SetRows(row + 1);
  const DateTime now = records_.MessageTime[Index()];
  const auto [place, isNew] = targets_.try_emplace(row);
  ARPATarget& target = place->second;
  // A number that the radar gives to another target keeps the time of its first one.
  if (isNew) target.firstMessage = now;
  target.latest = record;
  target.lastMessage = now;
  if (!std::exchange(target.due, true)) dueRows_.push_back(row);
}

void frmARPATargets::Refresh() {
  for (const int row : dueRows_) {
    ARPATarget& target = targets_[row];
    target.due = false;
    int column = 0;
    for (const ListColumn& design : kColumns) {
      fgARPATargets.Set(row, column, design.text(target));
      ++column;
    }
  }
  dueRows_.clear();
}

}  // namespace fathomline
