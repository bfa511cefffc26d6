#include "windows/coordinate_format.h"

#include <algorithm>

#include "decoding/angles.h"
#include "decoding/coordinate_text.h"

namespace fathomline {
namespace {

constexpr int kMostDecimalsOfMinutes = 6;
constexpr int kMostDecimalsOfSeconds = 4;

}  // namespace

frmGeoFormat::frmGeoFormat(Desktop& desktop, Records& records)
    : Window(desktop, {.name = "frmGeoFormat",
                       .caption = "Lat/Lon Format",
                       .place = {3000, 2000, 5000, 3200},
                       .style = WindowStyle::Dialog,
                       .resizable = false}),
      records_(records) {
  optFormat.onChoose = [this] {
    OfferDecimals(cmbDecimals.Choice());
    ShowExample();
  };
  cmbDecimals.onChoose = [this] { ShowExample(); };
  cmdOk.onClick = [this] { Ok(); };
  cmdCancel.onClick = [this] { Close(); };
  SetContent(Layout::Column({Layout::Form({{"Format :", optFormat},
                                           {"No of decimals : ", cmbDecimals},
                                           {"Example : ", lblExample}}),
                             Layout::Row({Layout::Space(), cmdOk, cmdCancel})}));
}

void frmGeoFormat::Load() {
  optFormat.ShowChoice(records_.CoordinateFormatIsDMS ? 1 : 0);
  OfferDecimals(records_.CoordinateDecimals);
  ShowExample();
}

// Each entry reads as its index.
void frmGeoFormat::OfferDecimals(int wanted) {
  const int most = IsDMS() ? kMostDecimalsOfSeconds : kMostDecimalsOfMinutes;
  cmbDecimals.Clear();
  for (int decimals = 0; decimals <= most; ++decimals) cmbDecimals.Add(PlainText(decimals));
  // The formatters take a count that they do not know as the most that they do.
  cmbDecimals.ShowChoice(wanted < 0 ? most : std::min(wanted, most));
}

void frmGeoFormat::ShowExample() {
  const double degrees = records_.References[1].ReferenceLatitude * kDegreesPerRadian;
  lblExample.SetText(FormatCoordinate(IsDMS(), cmbDecimals.Choice(), degrees, "LAT"));
}

void frmGeoFormat::Ok() {
  records_.CoordinateFormatIsDMS = IsDMS();
  records_.CoordinateDecimals = static_cast<std::int16_t>(cmbDecimals.Choice());
  Close();
}

}  // namespace fathomline
