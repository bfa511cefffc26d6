#include "ais/application_messages.h"

#include <array>
#include <string_view>

namespace fathomline {
namespace {

// The messages that carry an application.
constexpr unsigned kId6 = 1;
constexpr unsigned kId8 = 2;
constexpr unsigned kId25 = 4;
constexpr unsigned kId26 = 8;
constexpr unsigned kAllIds = kId6 | kId8 | kId25 | kId26;

constexpr int kNotNumbered = -1;

struct Application {
  int imo236;
  int iala;
  unsigned ids;
  std::string_view title;  // where it is the whole description
  void (*decode)(const AISReception& reception, AISApplicationData& record, int position);
};

// A safety text behind the application header, with twelve bits of its own in front.
void DecodeText(const AISReception& reception, AISApplicationData& record, int position) {
  constexpr int kHeaderCharacters = 7;
  const int first = position + 12;
  const int length = reception.payloadLength - kHeaderCharacters;
  // A payload that ends with the common header has no text at all, not even a blank.
  const int limit =
      length > 0 ? first + length * PayloadBits::kBitsPerCharacter - reception.fillBits : 0;
  BitsToText(reception.bits, first, limit, record.Description);
}

void DecodeInterrogation(const AISReception& reception, AISApplicationData& record, int position) {
  record.RequestedDAC = ReadValue<std::int16_t>(reception.bits, position, position + 9, {});
  record.RequestedFI = ReadValue<std::int16_t>(reception.bits, position + 10, position + 15, {});
  record.Description.assign("FI 2 - FI Interogation, DAC")
      .append(NumberText(record.RequestedDAC))
      .append(" FI")
      .append(NumberText(record.RequestedFI));
}

void DecodeHeightOverKeel(const AISReception& reception, AISApplicationData& record, int position) {
  record.HeightOverKeel =
      ReadValue<float>(reception.bits, position, position + 10, {.divisor = 10});
  record.Description.assign("Height over keel :").append(NumberText(record.HeightOverKeel));
}

void DecodePassengers(const AISReception& reception, AISApplicationData& record, int position) {
  record.Passengers = ReadValue<std::int16_t>(reception.bits, position, position + 12, {});
  record.Description.assign("Passengers onboard :").append(NumberText(record.Passengers));
}

template <auto Group>
void DecodeGroup(const AISReception& reception, AISApplicationData& record, int position) {
  ReadInOrder(record.*Group, reception.bits, position);
}

constexpr std::array kApplications = {
    Application{0, 0, kAllIds, "", DecodeText},
    Application{2, 2, kId6 | kId25 | kId26, "", DecodeInterrogation},
    Application{11, 32, kAllIds, "Meteorological & Hydrological Data",
                DecodeGroup<&AISApplicationData::MetHydro>},
    Application{12, 5, kAllIds, "Dangerous Cargo Indication",
                DecodeGroup<&AISApplicationData::DangerousCargo>},
    Application{13, 20, kAllIds, "Fairway Closed", DecodeGroup<&AISApplicationData::FairwayClosed>},
    Application{14, 33, kAllIds, "Tidal Window", DecodeGroup<&AISApplicationData::TidalWindow>},
    Application{15, 19, kAllIds, "", DecodeHeightOverKeel},
    Application{16, 40, kAllIds, "", DecodePassengers},
    Application{21, kNotNumbered, kId8, "Weather Observation Report from Ship",
                DecodeGroup<&AISApplicationData::WeatherReport>},
};

static_assert(LayoutIsSound<AISMetHydro>() && LayoutIsSound<AISDangerousCargo>() &&
              LayoutIsSound<AISFairwayClosed>() && LayoutIsSound<AISTidalWindow>() &&
              LayoutIsSound<AISTidalCurrent>() && LayoutIsSound<AISWeatherReport>());

void DecodeApplication(const AISReception& reception, unsigned id, AISApplicationData& record,
                       int position) {
  for (const Application& application : kApplications) {
    const int number = reception.binaryStandardIALA ? application.iala : application.imo236;
    if (number != record.FI || (application.ids & id) == 0) continue;
    application.decode(reception, record, position);
    if (!application.title.empty()) {
      record.Description.assign("FI ")
          .append(PlainText(record.FI))
          .append(" - ")
          .append(application.title);
    }
    return;
  }
  record.Description.assign("Message with FI (Function Identifier)")
      .append(NumberText(record.FI))
      .append(
          " received. FI is not decoded by this application! Please make sure you are using "
          "correct Binary Message Standard (IMO236 or IALA Proposal)");
}

// Area code and function identifier, 16 bits from `position`.
void ReadIdentifier(const PayloadBits& bits, AISApplicationData& record, int position) {
  record.DAC = ReadValue<std::int16_t>(bits, position, position + 9, {});
  record.FI = ReadValue<std::int16_t>(bits, position + 10, position + 15, {});
}

void DecodeMultiSlot(const AISReception& reception, unsigned id, AISMultiSlotRecord& record) {
  int position = 41;
  if (record.Addressed == 1) {
    record.DestinationMMSI = ReadValue<std::int32_t>(reception.bits, 41, 70, {});
    position = 71;
  }
  // Without an identifier nobody knows what the data are.
  if (record.Structured != 1) return;
  ReadIdentifier(reception.bits, record, position);
  DecodeApplication(reception, id, record, position + 16);
}

}  // namespace

void DecodeAddressedBinary(const AISReception& reception, AISBinaryRecord& record) {
  ReadFields(record, reception);
  record.DestinationMMSI = ReadValue<std::int32_t>(reception.bits, 41, 70, {});
  ReadIdentifier(reception.bits, record, 73);
  DecodeApplication(reception, kId6, record, 89);
}

void DecodeBroadcastBinary(const AISReception& reception, AISBinaryRecord& record) {
  ReadFields(record, reception);
  ReadIdentifier(reception.bits, record, 41);
  DecodeApplication(reception, kId8, record, 57);
}

void DecodeAddressedMultiSlot(const AISReception& reception, AISMultiSlotRecord& record) {
  ReadFields(record, reception);
  DecodeMultiSlot(reception, kId25, record);
}

void DecodeBroadcastMultiSlot(const AISReception& reception, AISMultiSlotRecord& record) {
  ReadFields(record, reception);
  DecodeMultiSlot(reception, kId26, record);
}

}  // namespace fathomline
