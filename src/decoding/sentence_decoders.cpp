#include "decoding/sentence_decoders.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/byte_search.h"
#include "base/fault.h"
#include "base/numbers.h"
#include "base/text.h"
#include "decoding/angles.h"

namespace fathomline {
namespace {

// The fields of one sentence, as views into it. Entries that are never reached stay empty.
template <std::size_t Entries>
struct SentenceFields {
  std::array<std::string_view, Entries> entry{};
  std::size_t commas = 0;
  std::string_view last;  // behind the last comma taken, up to the first "*"
};

// Cuts off one field for each comma, as many as there are passes.
template <std::size_t Entries>
void SplitFields(std::string_view& sentence, std::size_t passes, SentenceFields<Entries>& fields) {
  const char* begin = sentence.data();
  const char* const end = begin + sentence.size();
  const char* at = begin;
  std::size_t commas = 0;
  for (; commas < passes; ++commas) {
    at = FindByte(at, end, ',');
    if (at == end) break;
    const std::string_view field(begin, static_cast<std::size_t>(at - begin));
    // The entry behind the table is not there; its store is what faults.
    if (commas < Entries) fields.entry[commas] = field;
    begin = ++at;
  }
  fields.commas = commas;
  sentence.remove_prefix(static_cast<std::size_t>(begin - sentence.data()));
  fields.last = sentence.substr(0, sentence.find('*'));
}

void AssignText(std::string& text, std::string_view bytes) {
  unsigned char all = 0;
  for (const char c : bytes) all |= static_cast<unsigned char>(c);
  if (all <= 127) {
    text.assign(bytes);
  } else {
    text = FromLatin1(bytes);
  }
}

template <class Number>
void StoreValue(Number& member, std::string_view field) {
  member = ConvertTo<Number>(ValueOrNoValue(field));
}
void StoreValue(char& member, std::string_view field) {
  member = field.empty() ? ' ' : field.front();
}
void StoreValue(std::string& member, std::string_view field) {
  AssignText(member, field);
}

template <class Record, class Member, class Fields>
void Store(Record& record, const Column<Record, Member>& column, const Fields& fields) {
  StoreValue(record.*column.member, fields.entry[column.field]);
}

template <class Record, class Fields>
void Store(Record& record, const TimeColumn<Record>& column, const Fields& fields) {
  const std::string_view field = fields.entry[column.field];
  std::string& time = record.*column.member;
  time.assign(field.substr(0, 2)).push_back(':');
  time.append(Mid(field, 3, 2)).push_back(':');
  time.append(Mid(field, 5));
  AssignText(time, std::string_view(time));
}

template <class Record, class Fields>
void Store(Record& record, const BytesColumn<Record>& column, const Fields& fields) {
  (record.*column.member).assign(fields.entry[column.field]);
}

template <class Record, class Fields>
void Store(Record& record, const LatitudeColumn<Record>& column, const Fields& fields) {
  record.*column.member =
      LatitudeFromText(fields.entry[column.field], fields.entry[column.field + 1]);
}

template <class Record, class Fields>
void Store(Record& record, const LongitudeColumn<Record>& column, const Fields& fields) {
  record.*column.member =
      LongitudeFromText(fields.entry[column.field], fields.entry[column.field + 1]);
}

class DecoderFaults {
 public:
  DecoderFaults(const SentenceForm& form, std::string_view sentence, Dialogs& dialogs)
      : form_(form), sentence_(sentence), dialogs_(dialogs) {}

  void operator()(const Fault& fault) const {
    if (!form_.reportsFaults) return;
    const std::string type(form_.type);
    dialogs_.Ask({.text = "Error " + std::to_string(fault.Number()) + " : " + fault.Description() +
                          "  " + type + "-message : " + FromLatin1(sentence_),
                  .title = "Error Extract" + type,
                  .canBeSilenced = true,
                  .kind = "decoder"});
  }

 private:
  const SentenceForm& form_;
  std::string_view sentence_;
  Dialogs& dialogs_;
};

template <class Record, class RowOfLayout, class Fields>
void StoreGuarded(Record& record, const RowOfLayout& row, const Fields& fields,
                  const DecoderFaults& faults) {
  ResumeNext([&] { Store(record, row, fields); }, faults);
}

// Each element of an array is a statement of its own.
template <class Record, class Element, std::size_t Count, class Fields>
void StoreGuarded(Record& record, const ArrayColumn<Record, Element, Count>& row,
                  const Fields& fields, const DecoderFaults& faults) {
  for (std::size_t i = 0; i < Count; ++i) {
    ResumeNext([&] { StoreValue((record.*row.member)[i], fields.entry[row.field + i * row.step]); },
               faults);
  }
}

double AngleFromText(std::string_view text, std::size_t degreeDigits, bool negative) {
  const double degrees = ReadNumber(text.substr(0, degreeDigits));
  const double minutes = ReadNumber(Mid(text, degreeDigits + 1));
  const double value = degrees + minutes / 60.0;
  return (negative ? -value : value) * kRadiansPerDegree;
}

}  // namespace

double ValueOrNoValue(std::string_view text) {
  return text.empty() ? NoValue : ReadNumber(text);
}

double LatitudeFromText(std::string_view text, std::string_view hemisphere) {
  return AngleFromText(text, 2, hemisphere == "S");
}

double LongitudeFromText(std::string_view text, std::string_view hemisphere) {
  return AngleFromText(text, 3, hemisphere == "W");
}

void GSVRecord::Complete() {
  for (std::size_t slot = 0; slot < PRN.size(); ++slot) {
    if (PRN[slot] == 1 && Elevation[slot] == NoValue) PRN[slot] = NoValue;
  }
}

template <class Record>
void Extract(std::string_view& sentence, Record& record, Dialogs& dialogs) {
  const DecoderFaults faults(Record::kForm, sentence, dialogs);

  SentenceFields<Record::kForm.entries> fields;
  SplitFields(sentence, Record::kForm.passes, fields);
  if (Record::kForm.leavesWhenTooLong && fields.commas == Record::kForm.passes) return;
  ResumeNext(
      [&] {
        if (fields.commas >= Record::kForm.entries) Raise(FaultNumber::OutOfRange);
        fields.entry[fields.commas] = fields.last;
      },
      faults);
  std::apply([&](const auto&... row) { (StoreGuarded(record, row, fields, faults), ...); },
             Record::Layout());
  if constexpr (requires { record.Complete(); }) record.Complete();
}

template void Extract(std::string_view&, GGARecord&, Dialogs&);
template void Extract(std::string_view&, GNSRecord&, Dialogs&);
template void Extract(std::string_view&, GLLRecord&, Dialogs&);
template void Extract(std::string_view&, RMCRecord&, Dialogs&);
template void Extract(std::string_view&, VTGRecord&, Dialogs&);
template void Extract(std::string_view&, ZDARecord&, Dialogs&);
template void Extract(std::string_view&, HDTRecord&, Dialogs&);
template void Extract(std::string_view&, ATTRecord&, Dialogs&);
template void Extract(std::string_view&, ROTRecord&, Dialogs&);
template void Extract(std::string_view&, VHWRecord&, Dialogs&);
template void Extract(std::string_view&, DBTRecord&, Dialogs&);
template void Extract(std::string_view&, GSARecord&, Dialogs&);
template void Extract(std::string_view&, GSVRecord&, Dialogs&);
template void Extract(std::string_view&, GSTRecord&, Dialogs&);
template void Extract(std::string_view&, TTMRecord&, Dialogs&);
template void Extract(std::string_view&, VDMRecord&, Dialogs&);

}  // namespace fathomline
