#include "setup/setup_rules.h"

#include <algorithm>

#include "base/fault.h"
#include "base/text.h"

namespace fathomline {
namespace {

using enum SentenceType;

constexpr std::string_view kPositions = "GGA/GNS/GLL/RMC";
constexpr std::string_view kPositionData = "position data";

constexpr auto kExclusions = std::to_array<Exclusion>({
    {GGA, GNS, kPositions, kPositionData},
    {GGA, GLL, kPositions, kPositionData},
    {GGA, RMC, kPositions, kPositionData},
    {GLL, GGA, kPositions, kPositionData},
    {GLL, GNS, kPositions, kPositionData},
    {GLL, RMC, kPositions, kPositionData},
    {GNS, GGA, kPositions, kPositionData},
    {GNS, GLL, kPositions, kPositionData},
    {GNS, RMC, kPositions, kPositionData},
    {RMC, GNS, kPositions, kPositionData},
    {RMC, GLL, kPositions, kPositionData},
    {RMC, GGA, kPositions, kPositionData},
    {RMC, VTG, "RMC/VTG", "SOG/COG"},
    {RMC, ZDA, "RMC/ZDA", "date"},
    {VTG, RMC, "RMC/VTG", "SOG/COG"},
    {ZDA, RMC, "RMC/ZDA", "date"},
    {ATT, HDT, "HDT/ATT", "true heading"},
    {HDT, ATT, "HDT/ATT", "true heading"},
});

constexpr std::size_t kLongestAddress = 15;
constexpr std::int32_t kHighestPort = 65535;

bool IsDigits(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The number of a text of digits, or the limit above which it does not matter.
std::int32_t Number(std::string_view digits, std::int32_t limit) {
  std::int32_t number = 0;
  for (const char digit : digits) number = std::min(limit, number * 10 + (digit - '0'));
  return number;
}

}  // namespace

std::size_t SentenceSelection::Index(SentenceType type) {
  const auto* const found = std::find(kSentenceBoxes.begin(), kSentenceBoxes.end(), type);
  if (found == kSentenceBoxes.end()) Raise(FaultNumber::OutOfRange);
  return static_cast<std::size_t>(found - kSentenceBoxes.begin());
}

std::vector<SentenceType> SentenceSelection::Ticked() const {
  std::vector<SentenceType> types;
  for (const SentenceType type : kSentenceBoxes) {
    if ((*this)[type]) types.push_back(type);
  }
  return types;
}

std::string Exclusion::Message() const {
  std::string text = "Only one of ";
  text.append(group).append(" message, containing ").append(content);
  return text + ", can be enabled simultaneously. " + ToText(cleared) + " disabled.";
}

std::vector<Exclusion> ExclusionsOf(SentenceType ticked, const SentenceSelection& selection) {
  std::vector<Exclusion> exclusions;
  for (const Exclusion& row : kExclusions) {
    if (row.ticked == ticked && selection[row.cleared]) exclusions.push_back(row);
  }
  return exclusions;
}

bool IsIPAddress(std::string_view text) {
  if (text.size() > kLongestAddress) return false;
  if (std::count(text.begin(), text.end(), '.') != 3) return false;
  for (int part = 1; part <= 4; ++part) {
    const std::size_t end = std::min(text.find('.'), text.size());
    const std::string_view digits = text.substr(0, end);
    const std::int32_t value = Number(digits, 256);
    if (!IsDigits(digits) || value > 255) return false;
    if ((part == 1 || part == 4) && value == 0) return false;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return true;
}

std::optional<std::int32_t> PortNumber(std::string_view text) {
  const std::string_view digits = Trim(text);
  if (!IsDigits(digits)) return std::nullopt;
  const std::int32_t port = Number(digits, kHighestPort + 1);
  if (port < 1 || port > kHighestPort) return std::nullopt;
  return port;
}

void ReArrange_IP_List(Records& records, std::string_view address) {
  auto& list = records.IPList;
  const auto room = static_cast<std::int16_t>(list.size());
  records.IPListCount = std::clamp<std::int16_t>(records.IPListCount, 0, room);
  const auto end = list.begin() + records.IPListCount;
  if (std::find(list.begin(), end, address) != end) return;
  if (records.IPListCount == room) {
    std::rotate(list.begin(), list.begin() + 1, list.end());
  } else {
    ++records.IPListCount;
  }
  list[static_cast<std::size_t>(records.IPListCount - 1)] = address;
}

int SystemTypeButton(std::string_view word) {
  const auto* const found =
      std::find_if(kSystemTypes.begin(), kSystemTypes.end(),
                   [word](const SystemTypeWord& row) { return row.word == word; });
  return found == kSystemTypes.end() ? 0 : static_cast<int>(found - kSystemTypes.begin());
}

int ReferenceButton(std::int16_t used) {
  const auto* const found =
      std::find_if(kReferenceOptions.begin(), kReferenceOptions.end(),
                   [used](const ReferenceOption& row) { return row.used == used; });
  return found == kReferenceOptions.end() ? 0 : static_cast<int>(found - kReferenceOptions.begin());
}

}  // namespace fathomline
