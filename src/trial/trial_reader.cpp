#include "trial/trial_reader.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>

#include "trial/strict_fields.h"

namespace fathomline::trial {
namespace {

// Characters of a line, the address included and the line end not.
constexpr std::size_t kLongestLine = 80;

enum class Kind : std::uint8_t { Plain, Comma, Star, Bad };

constexpr std::array<Kind, 256> kKinds = [] {
  std::array<Kind, 256> kinds{};
  for (std::size_t c = 0; c < kinds.size(); ++c) {
    if (c < 32 || c > 126 || c == '$' || c == '!' || c == '\\') kinds[c] = Kind::Bad;
  }
  kinds[','] = Kind::Comma;
  kinds['*'] = Kind::Star;
  return kinds;
}();

constexpr bool IsLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Below zero for what is none.
constexpr int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

std::string_view CutTagBlock(std::string_view line) {
  if (line.empty() || line.front() != '\\') return line;
  const std::size_t end = line.find('\\', 1);
  return end == std::string_view::npos ? line : line.substr(end + 1);
}

constexpr double kNotRead = std::numeric_limits<double>::quiet_NaN();

template <class Number>
double OrNotRead(std::optional<Number> value) {
  return value ? static_cast<double>(*value) : kNotRead;
}

// What a row makes of its field, which is not empty. `next` is the field behind it.
template <class Record, class Member>
double StrictValue(const Column<Record, Member>& row, std::string_view text, std::string_view) {
  if constexpr (std::is_same_v<Member, char>) {
    return text.size() == 1 ? static_cast<double>(text.front()) : kNotRead;
  } else if constexpr (std::is_same_v<Member, std::string>) {
    // Times and dates that are kept as received; every other text has no form.
    if (row.name == "Time") return OrNotRead(ReadStrictTime(text));
    if (row.name == "Date") return OrNotRead(ReadStrictDate(text));
    return 0.0;
  } else {
    return OrNotRead(ReadStrictNumber(text));
  }
}
template <class Record>
double StrictValue(const TimeColumn<Record>&, std::string_view text, std::string_view) {
  return OrNotRead(ReadStrictTime(text));
}
template <class Record>
double StrictValue(const BytesColumn<Record>&, std::string_view text, std::string_view) {
  return IsArmoured(text) ? 0.0 : kNotRead;
}
template <class Record>
double StrictValue(const LatitudeColumn<Record>&, std::string_view text, std::string_view next) {
  return OrNotRead(ReadStrictLatitude(text, next));
}
template <class Record>
double StrictValue(const LongitudeColumn<Record>&, std::string_view text, std::string_view next) {
  return OrNotRead(ReadStrictLongitude(text, next));
}
template <class Record, class Element, std::size_t Count>
double StrictValue(const ArrayColumn<Record, Element, Count>&, std::string_view text,
                   std::string_view) {
  return OrNotRead(ReadStrictNumber(text));
}

// Calls visit with the record of a type; nothing for what is no type of the layouts.
template <class Visitor>
void WithRecordOf(SentenceType type, Visitor&& visit) {
  switch (type) {
    case SentenceType::GGA:
      return visit(std::type_identity<GGARecord>());
    case SentenceType::GNS:
      return visit(std::type_identity<GNSRecord>());
    case SentenceType::GLL:
      return visit(std::type_identity<GLLRecord>());
    case SentenceType::RMC:
      return visit(std::type_identity<RMCRecord>());
    case SentenceType::VTG:
      return visit(std::type_identity<VTGRecord>());
    case SentenceType::ZDA:
      return visit(std::type_identity<ZDARecord>());
    case SentenceType::HDT:
      return visit(std::type_identity<HDTRecord>());
    case SentenceType::ATT:
      return visit(std::type_identity<ATTRecord>());
    case SentenceType::ROT:
      return visit(std::type_identity<ROTRecord>());
    case SentenceType::VHW:
      return visit(std::type_identity<VHWRecord>());
    case SentenceType::DBT:
      return visit(std::type_identity<DBTRecord>());
    case SentenceType::GSA:
      return visit(std::type_identity<GSARecord>());
    case SentenceType::GSV:
      return visit(std::type_identity<GSVRecord>());
    case SentenceType::GST:
      return visit(std::type_identity<GSTRecord>());
    case SentenceType::TTM:
      return visit(std::type_identity<TTMRecord>());
    case SentenceType::VDM:
    case SentenceType::VDO:
      return visit(std::type_identity<VDMRecord>());
    case SentenceType::None:
      return;
  }
}

bool IsOfTheLayouts(SentenceType type) {
  bool found = false;
  WithRecordOf(type, [&](auto) { found = true; });
  return found;
}

}  // namespace

LineClass TrialReader::Split(std::string_view line) {
  const std::size_t lastShown = line.find_last_not_of("\r\n ");
  line = CutTagBlock(line.substr(0, lastShown + 1));
  sentence_.tooLong = line.size() > kLongestLine;
  if (line.empty()) return LineClass::Empty;
  if (line.front() != '$' && line.front() != '!') return LineClass::Foreign;

  std::size_t count = 0;
  std::size_t fieldBegin = 1;
  unsigned sum = 0;
  const auto endField = [&](std::size_t at) {
    if (count < Sentence::kMostFields) {
      sentence_.fields_[count] = line.substr(fieldBegin, at - fieldBegin);
    }
    ++count;
    fieldBegin = at + 1;
  };
  std::size_t at = 1;
  for (; at < line.size(); ++at) {
    const auto c = static_cast<unsigned char>(line[at]);
    const Kind kind = kKinds[c];
    if (kind == Kind::Bad) return LineClass::Malformed;
    if (kind == Kind::Star) break;
    if (kind == Kind::Comma) endField(at);
    sum ^= c;
  }
  endField(at);
  sentence_.fieldCount = count;
  const std::string_view address = sentence_.fields_[0];
  if (address.empty() || !std::all_of(address.begin(), address.end(), IsLetterOrDigit)) {
    return LineClass::Malformed;
  }
  sentence_.address = address;
  if (at == line.size()) return LineClass::NoChecksum;
  const std::string_view told = line.substr(at + 1);
  if (told.size() != 2 || HexDigit(told[0]) < 0 || HexDigit(told[1]) < 0) {
    return LineClass::Malformed;
  }
  const auto toldSum = static_cast<unsigned>(HexDigit(told[0]) * 16 + HexDigit(told[1]));
  return toldSum == sum ? LineClass::Good : LineClass::WrongChecksum;
}

bool TrialReader::FindType() {
  const std::string_view address = sentence_.address;
  if (address == "PFEC" && sentence_.Field(1) == "GPatt") {
    sentence_.type = SentenceType::ATT;
    sentence_.name = PackName(kAttitudeName);
    return true;
  }
  if (address.size() != 5 || address.front() == 'P') return false;
  sentence_.type = SentenceTypeOf(address.substr(2));
  sentence_.name = PackName(address);
  return sentence_.type != SentenceType::ATT && IsOfTheLayouts(sentence_.type);
}

template <class Record>
void TrialReader::ReadLayout() {
  std::size_t slot = 0;
  const auto readRow = [&](const auto& row) {
    using Row = std::remove_cvref_t<decltype(row)>;
    for (std::size_t i = 0; i < kSlotsOf<Row>; ++i, ++slot) {
      std::size_t field = row.field;
      if constexpr (requires { row.step; }) field += i * row.step;
      const std::string_view text = sentence_.Field(field);
      if (text.empty()) {
        sentence_.values_[slot] = kNotRead;
        continue;
      }
      const double value = StrictValue(row, text, sentence_.Field(field + 1));
      sentence_.values_[slot] = value;
      if (std::isnan(value)) sentence_.unreadable |= 1U << slot;
    }
  };
  std::apply([&](const auto&... row) { (readRow(row), ...); }, Record::Layout());
}

const Sentence& TrialReader::Read(std::string_view line) {
  sentence_.address = {};
  sentence_.fieldCount = 0;
  sentence_.unreadable = 0;
  sentence_.lineClass = Split(line);
  const bool isGood = sentence_.lineClass == LineClass::Good;
  sentence_.used = isGood || (unchecked_ && sentence_.lineClass == LineClass::NoChecksum);
  if (!sentence_.used) return sentence_;
  if (!FindType()) {
    sentence_.used = false;
    if (isGood) sentence_.lineClass = LineClass::Unknown;
    return sentence_;
  }
  WithRecordOf(sentence_.type,
               [this](auto record) { ReadLayout<typename decltype(record)::type>(); });
  if (isGood && sentence_.unreadable != 0) sentence_.lineClass = LineClass::Unreadable;
  return sentence_;
}

std::string_view FieldName(SentenceType type, std::size_t slot) {
  std::string_view name;
  WithRecordOf(type, [&](auto record) {
    std::size_t first = 0;
    const auto visitRow = [&](const auto& row) {
      const std::size_t next = first + kSlotsOf<std::remove_cvref_t<decltype(row)>>;
      if (slot >= first && slot < next) name = row.name;
      first = next;
    };
    std::apply([&](const auto&... row) { (visitRow(row), ...); }, decltype(record)::type::Layout());
  });
  return name;
}

}  // namespace fathomline::trial
