#include "simulator/gnss_sentences.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "simulator/portable_math.h"

namespace fathomline::simulator {
namespace {

using enum TruthFigure;

struct Pen {
  SentenceWriter& writer;
  const GNSSReceiver& receiver;
  const ReceiverFix& fix;
  const UtcMoment& moment;
  SimulationTruth& truth;

  void Note(TruthFigure figure, double value) {
    if (fix.Usable()) truth.Note(figure, value);
  }
};

// The figures of a position follow each other in the same order for every sentence.
constexpr TruthFigure Next(TruthFigure figure, int steps) {
  return static_cast<TruthFigure>(static_cast<int>(figure) + steps);
}
static_assert(Next(GGALatitude, 3) == GGAEastError && Next(GNSLatitude, 3) == GNSEastError &&
              Next(GLLLatitude, 3) == GLLEastError && Next(RMCLatitude, 3) == RMCEastError);

void WritePosition(Pen& pen, int minuteDecimals, TruthFigure firstFigure) {
  if (!pen.fix.hasPosition) {
    pen.writer.Empty(4);
    return;
  }
  const double latitude = pen.writer.Latitude(pen.fix.position.latitude, minuteDecimals);
  const double longitude = pen.writer.Longitude(pen.fix.position.longitude, minuteDecimals);
  const GeoPoint& position = pen.fix.truth.position;
  const DegreeLengths lengths = DegreeLengthsAt(position.latitude);
  pen.Note(firstFigure, latitude);
  pen.Note(Next(firstFigure, 1), longitude);
  pen.Note(Next(firstFigure, 2), (latitude - position.latitude) * lengths.latitude);
  pen.Note(Next(firstFigure, 3), (longitude - position.longitude) * lengths.longitude);
}

// Altitude and geoidal separation, with their units where the sentence has them.
void WriteHeights(Pen& pen, bool units, TruthFigure altitudeFigure, TruthFigure errorFigure) {
  if (!pen.fix.hasPosition) {
    pen.writer.Empty(units ? 4 : 2);
    return;
  }
  const double altitude = pen.writer.Number(pen.fix.altitude, 2);
  pen.Note(altitudeFigure, altitude);
  pen.Note(errorFigure, altitude - pen.fix.truth.height);
  if (units) pen.writer.Letter('M');
  pen.writer.Number(pen.receiver.GeoidalSeparation(), 1);
  if (units) pen.writer.Letter('M');
}

void WriteHDOP(Pen& pen, std::optional<TruthFigure> figure) {
  if (!pen.fix.Usable()) {
    pen.writer.Empty();
    return;
  }
  const double written = pen.writer.Number(pen.fix.dilution.horizontal, 1);
  if (figure) pen.Note(*figure, written);
}

void WriteCorrections(Pen& pen, std::optional<TruthFigure> figure) {
  if (!pen.fix.Differential()) {
    pen.writer.Empty(2);
    return;
  }
  const double age = pen.writer.Number(pen.fix.truth.age, 1);
  if (figure) pen.Note(*figure, age);
  pen.writer.Integer(pen.fix.truth.station, 4);
}

void WriteZDA(Pen& pen) {
  pen.writer.Begin("$GNZDA");
  pen.writer.TimeOfDay(pen.moment);
  pen.writer.Integer(pen.moment.day, 2);
  pen.writer.Integer(pen.moment.month, 2);
  pen.writer.Integer(pen.moment.year, 4);
  pen.writer.Text("00").Text("00");
  pen.writer.End();
}

void WriteGGA(Pen& pen) {
  pen.writer.Begin("$GNGGA");
  pen.writer.TimeOfDay(pen.moment);
  WritePosition(pen, 5, GGALatitude);
  pen.writer.Integer(pen.fix.quality->indicator);
  pen.writer.Integer(pen.fix.satellites, 2);
  pen.Note(GGASatellites, pen.fix.satellites);
  WriteHDOP(pen, GGAHDOP);
  WriteHeights(pen, true, GGAAltitude, GGAHeightError);
  WriteCorrections(pen, GGAAge);
  pen.writer.End();
}

void WriteGNS(Pen& pen) {
  pen.writer.Begin("$GNGNS");
  pen.writer.TimeOfDay(pen.moment);
  WritePosition(pen, 5, GNSLatitude);
  const char mode = pen.fix.quality->mode;
  const char modes[] = {mode, mode};  // GPS and GLONASS
  pen.writer.Text({modes, sizeof modes});
  pen.writer.Integer(pen.fix.satellites, 2);
  WriteHDOP(pen, std::nullopt);
  WriteHeights(pen, false, GNSAltitude, GNSHeightError);
  WriteCorrections(pen, std::nullopt);
  pen.writer.End();
}

char Status(const Pen& pen) {
  return pen.fix.Usable() ? 'A' : 'V';
}

// GLL, RMC and VTG know the modes of version 2.3 only, where RTK is differential.
char SimpleMode(const Pen& pen) {
  return pen.fix.Differential() ? 'D' : pen.fix.quality->mode;
}

void WriteGLL(Pen& pen) {
  pen.writer.Begin("$GNGLL");
  WritePosition(pen, 4, GLLLatitude);
  pen.writer.TimeOfDay(pen.moment);
  pen.writer.Letter(Status(pen)).Letter(SimpleMode(pen));
  pen.writer.End();
}

void WriteRMC(Pen& pen) {
  pen.writer.Begin("$GNRMC");
  pen.writer.TimeOfDay(pen.moment);
  pen.writer.Letter(Status(pen));
  WritePosition(pen, 5, RMCLatitude);
  if (pen.fix.Usable()) {
    pen.Note(RMCSOG, pen.writer.Number(pen.fix.speed, 2));
    pen.Note(RMCCOG, pen.writer.Angle(pen.fix.course, 1, 3));
  } else {
    pen.writer.Empty(2);
  }
  pen.writer.ShortDate(pen.moment);
  pen.writer.Number(std::fabs(pen.receiver.MagneticVariation()), 1);
  pen.writer.Letter(pen.receiver.MagneticVariation() < 0.0 ? 'W' : 'E').Letter(SimpleMode(pen));
  pen.writer.End();
}

void WriteVTG(Pen& pen) {
  pen.writer.Begin("$GNVTG");
  if (pen.fix.Usable()) {
    pen.Note(VTGCOG, pen.writer.Angle(pen.fix.course, 1, 3));
    pen.writer.Letter('T');
    pen.writer.Angle(FullCircle(pen.fix.course - pen.receiver.MagneticVariation()), 1, 3);
    pen.writer.Letter('M');
    pen.Note(VTGSOG, pen.writer.Number(pen.fix.speed, 2));
    pen.writer.Letter('N');
    pen.writer.Number(pen.fix.speed * 1.852, 2);
    pen.writer.Letter('K');
  } else {
    pen.writer.Empty().Letter('T').Empty().Letter('M').Empty().Letter('N').Empty().Letter('K');
  }
  pen.writer.Letter(SimpleMode(pen));
  pen.writer.End();
}

void WriteGSALine(Pen& pen, std::span<const TrackedSatellite> satellites) {
  pen.writer.Begin("$GNGSA");
  pen.writer.Letter('A').Letter(pen.fix.Usable() ? '3' : '1');
  int rest = 12;
  for (const TrackedSatellite& satellite : satellites) {
    if (!satellite.used) continue;
    pen.writer.Integer(satellite.view.id, 2);
    --rest;
  }
  pen.writer.Empty(rest);
  if (pen.fix.Usable()) {
    pen.Note(GSAPDOP, pen.writer.Number(pen.fix.dilution.position, 1));
    pen.Note(GSAHDOP, pen.writer.Number(pen.fix.dilution.horizontal, 1));
    pen.Note(GSAVDOP, pen.writer.Number(pen.fix.dilution.vertical, 1));
  } else {
    pen.writer.Empty(3);
  }
  pen.writer.End();
}

// One sentence for each constellation in use, or one without satellites.
void WriteGSA(Pen& pen) {
  if (!pen.fix.Usable()) {
    WriteGSALine(pen, {});
    return;
  }
  for (std::size_t c = 0; c < kConstellationCount; ++c) {
    const auto satellites = pen.receiver.Satellites(c);
    if (std::any_of(satellites.begin(), satellites.end(),
                    [](const TrackedSatellite& satellite) { return satellite.used; })) {
      WriteGSALine(pen, satellites);
    }
  }
}

void WriteGSV(Pen& pen) {
  constexpr std::size_t kPerSentence = 4;
  for (std::size_t c = 0; c < kConstellationCount; ++c) {
    const auto satellites = pen.receiver.Satellites(c);
    const std::size_t sentences =
        std::max<std::size_t>(1, (satellites.size() + kPerSentence - 1) / kPerSentence);
    for (std::size_t number = 1; number <= sentences; ++number) {
      pen.writer.Begin(kGSVAddresses[c]);
      pen.writer.Integer(static_cast<std::int64_t>(sentences));
      pen.writer.Integer(static_cast<std::int64_t>(number));
      pen.writer.Integer(static_cast<std::int64_t>(satellites.size()), 2);
      const std::size_t from = (number - 1) * kPerSentence;
      for (const TrackedSatellite& satellite :
           satellites.subspan(from, std::min(kPerSentence, satellites.size() - from))) {
        pen.writer.Integer(satellite.view.id, 2);
        pen.writer.Number(satellite.view.elevation, 0, 2);
        pen.writer.Angle(satellite.view.azimuth, 0, 3);
        if (satellite.snr > 0) {
          pen.writer.Integer(satellite.snr, 2);
        } else {
          pen.writer.Empty();
        }
      }
      pen.writer.End();
    }
  }
}

void WriteGST(Pen& pen) {
  pen.writer.Begin("$GNGST");
  pen.writer.TimeOfDay(pen.moment);
  if (pen.fix.Usable()) {
    const FixQuality& quality = *pen.fix.quality;
    // The receiver's own estimate follows the geometry, with an ellipse a little out of round.
    const double scale = std::clamp(pen.fix.dilution.horizontal, 0.5, 3.0) / 0.7;
    const double major = quality.horizontal * scale * 1.1;
    const double minor = quality.horizontal * scale * 0.9;
    const double direction = FullCircle(20.0 + pen.fix.truth.seconds / 240.0);
    const auto [sine, cosine] = SineCosineOfDegrees(direction);
    const auto along = [&](double ofMajor, double ofMinor) {
      return std::sqrt(major * ofMajor * major * ofMajor + minor * ofMinor * minor * ofMinor);
    };
    pen.Note(GSTRMS, pen.writer.Number(quality.vertical * 0.9, 3));
    pen.writer.Number(major, 3);
    pen.writer.Number(minor, 3);
    pen.writer.Angle(direction, 1);
    pen.Note(GSTSdLatitude, pen.writer.Number(along(cosine, sine), 3));
    pen.Note(GSTSdLongitude, pen.writer.Number(along(sine, cosine), 3));
    pen.Note(GSTSdAltitude, pen.writer.Number(quality.vertical * scale, 3));
  } else {
    pen.writer.Empty(7);
  }
  pen.writer.End();
}

}  // namespace

void WriteGNSSSentence(SentenceKind kind, SentenceWriter& writer, const GNSSReceiver& receiver,
                       const UtcMoment& moment, SimulationTruth& truth) {
  Pen pen{writer, receiver, receiver.Fix(), moment, truth};
  switch (kind) {
    case SentenceKind::ZDA:
      return WriteZDA(pen);
    case SentenceKind::GGA:
      return WriteGGA(pen);
    case SentenceKind::GNS:
      return WriteGNS(pen);
    case SentenceKind::GLL:
      return WriteGLL(pen);
    case SentenceKind::RMC:
      return WriteRMC(pen);
    case SentenceKind::VTG:
      return WriteVTG(pen);
    case SentenceKind::GSA:
      return WriteGSA(pen);
    case SentenceKind::GSV:
      return WriteGSV(pen);
    case SentenceKind::GST:
      return WriteGST(pen);
    default:
      return;
  }
}

}  // namespace fathomline::simulator
