#include "simulator/traffic_reports.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "simulator/portable_math.h"

namespace fathomline::simulator {
namespace {

using enum EncodedField;

constexpr int kPositionDeviceGPS = 1;
constexpr int kPositionDeviceSurveyed = 7;
constexpr double kStaticInterval = 360.0;
// Static data come soon after the start, so that short recordings have names.
constexpr double kFirstStaticWithin = 40.0;
constexpr double kTurningRate = 3.0;  // degrees per minute, from which a ship counts as turning
constexpr std::int64_t kNoHeading = 511;
constexpr std::int64_t kNoTimestamp = 60;
// What a class B unit without time slots of its own sends as communication state.
constexpr std::int64_t kCarrierSenseState = 0b1100000000000000110;

MessageValues Begin(int id, const TargetIdentity& identity) {
  MessageValues values;
  values.Set(MessageId, id);
  values.Set(MMSI, identity.mmsi);
  return values;
}

void SetPlace(MessageValues& values, GeoPoint position) {
  values.Set(Longitude, EncodeAngle(position.longitude));
  values.Set(Latitude, EncodeAngle(position.latitude));
}

void SetMotion(MessageValues& values, double speed, double course) {
  values.Set(SpeedOverGround, std::min<std::int64_t>(1022, std::llround(speed * 10.0)));
  values.Set(CourseOverGround, std::llround(course * 10.0) % 3600);
}

void SetSize(MessageValues& values, const TargetIdentity& identity) {
  values.Set(ToBow, identity.toBow);
  values.Set(ToStern, identity.toStern);
  values.Set(ToPort, identity.toPort);
  values.Set(ToStarboard, identity.toStarboard);
}

std::int64_t WholeHeading(double heading) {
  return std::llround(heading) % 360;
}

// The communication state of a station that plans its own slots: what stands behind the slot
// time-out depends on it.
std::int64_t SlotState(int count, const UtcMoment& moment) {
  const int timeout = 7 - count % 8;
  int sub = 0;
  if (timeout == 0) {
    sub = 2250 / 3;  // slot offset
  } else if (timeout == 1) {
    sub = (moment.hour << 9) | (moment.minute << 2);
  } else if (timeout % 2 == 0) {
    sub = count * 37 % 2250;  // slot number
  } else {
    sub = 20 + count % 11;  // received stations
  }
  return (timeout << 14) | sub;
}

MessageValues PositionReport(int id, const TargetIdentity& identity, GeoPoint position,
                             double speed, double course, double rateOfTurn) {
  MessageValues values = Begin(id, identity);
  SetPlace(values, position);
  SetMotion(values, speed, course);
  values.Set(NavStatus, identity.navStatus);
  values.Set(RateOfTurn, EncodeRateOfTurn(rateOfTurn));
  values.Set(TrueHeading, WholeHeading(course));
  return values;
}

MessageValues ClassBPosition(const TargetIdentity& identity, GeoPoint position,
                             const TargetMotion& motion, const UtcMoment& moment) {
  MessageValues values = Begin(18, identity);
  SetPlace(values, position);
  SetMotion(values, motion.speed, motion.course);
  values.Set(TrueHeading, kNoHeading);
  values.Set(Timestamp, moment.second);
  values.Set(UnitFlag, 1);
  values.Set(DSCFlag, 1);
  values.Set(BandFlag, 1);
  values.Set(Message22Flag, 1);
  values.Set(CommStateFlag, 1);
  values.Set(RadioStatus, kCarrierSenseState);
  return values;
}

MessageValues AidToNavigation(const TargetIdentity& identity, GeoPoint position,
                              const UtcMoment& moment) {
  MessageValues values = Begin(21, identity);
  const std::string_view name = identity.name;
  constexpr std::size_t kNameCharacters = 20;
  SetPlace(values, position);
  SetSize(values, identity);
  values.Set(AidType, identity.shipType);
  values.Set(Name, name.substr(0, kNameCharacters));
  if (name.size() > kNameCharacters) values.Set(NameExtension, name.substr(kNameCharacters));
  values.Set(PositionDevice, kPositionDeviceSurveyed);
  values.Set(Timestamp, identity.isVirtual ? kNoTimestamp + 1 : moment.second);
  values.Set(VirtualFlag, identity.isVirtual ? 1 : 0);
  return values;
}

MessageValues BaseStation(const TargetIdentity& identity, GeoPoint position,
                          const UtcMoment& moment, std::int64_t radioStatus) {
  MessageValues values = Begin(4, identity);
  SetPlace(values, position);
  values.Set(Year, moment.year);
  values.Set(Month, moment.month);
  values.Set(Day, moment.day);
  values.Set(Hour, moment.hour);
  values.Set(Minute, moment.minute);
  values.Set(Second, moment.second);
  values.Set(Accuracy, 1);
  values.Set(PositionDevice, kPositionDeviceSurveyed);
  values.Set(RadioStatus, radioStatus);
  return values;
}

MessageValues StaticVoyageData(const TargetIdentity& identity, const UtcMoment& moment) {
  MessageValues values = Begin(5, identity);
  SetSize(values, identity);
  values.Set(Version, 2);
  values.Set(IMONumber, identity.imo);
  values.Set(CallSign, identity.callSign);
  values.Set(Name, identity.name);
  values.Set(ShipType, identity.shipType);
  values.Set(PositionDevice, kPositionDeviceGPS);
  values.Set(Month, moment.month % 12 + 1);
  values.Set(Day, identity.etaDay);
  values.Set(Hour, identity.etaDay % 24);
  values.Set(Minute, 30);
  values.Set(Draught, identity.draughtDecimetres);
  values.Set(Destination, identity.destination);
  return values;
}

}  // namespace

TrafficReports::TrafficReports(const Traffic& traffic, const LocalMap& map, std::uint64_t seed,
                               double rate)
    : traffic_(traffic), map_(map), rate_(rate) {
  // Moments of its own, so that the traffic is the same whether or not it is told of.
  Random random(seed ^ 0xA15U, RandomStream::Traffic);
  for (int target = 0; target < traffic.Count(); ++target) {
    Report report{0, target, false};
    const double phase = random.Uniform();
    const double interval = Interval(report, traffic.Motion(target, 0.0));
    report.due = static_cast<SimulatedTime>(phase * interval * 1e9);
    queue_.push(report);
    const TargetKind kind = traffic.Identity(target).kind;
    if (kind == TargetKind::ClassA || kind == TargetKind::ClassB) {
      const double first = std::min(kFirstStaticWithin, Interval({0, target, true}, {}));
      queue_.push({static_cast<SimulatedTime>(random.Uniform() * first * 1e9), target, true});
    }
  }
}

SimulatedTime TrafficReports::NextDue() const {
  return queue_.empty() ? std::numeric_limits<SimulatedTime>::max() : queue_.top().due;
}

double TrafficReports::Interval(const Report& report, const TargetMotion& motion) const {
  double interval = kStaticInterval;
  if (!report.isStatic) {
    switch (traffic_.Identity(report.target).kind) {
      case TargetKind::ClassA: {
        const bool turning = std::fabs(motion.rateOfTurn) > kTurningRate;
        if (motion.speed < 0.1) {
          interval = 180.0;
        } else if (motion.speed <= 14.0) {
          interval = turning ? 10.0 / 3.0 : 10.0;
        } else {
          interval = turning ? 2.0 : 6.0;
        }
        break;
      }
      case TargetKind::ClassB:
        interval = motion.speed > 2.0 ? 30.0 : 180.0;
        break;
      case TargetKind::AidToNavigation:
        interval = 180.0;
        break;
      case TargetKind::BaseStation:
        interval = 10.0;
        break;
    }
  }
  return interval / rate_;
}

void TrafficReports::WriteNext(SentenceWriter& writer, const UtcMoment& moment) {
  Report report = queue_.top();
  queue_.pop();
  const TargetMotion motion = traffic_.Motion(report.target, ToSeconds(report.due));
  if (report.isStatic) {
    WriteStatic(writer, report, motion, moment);
  } else {
    WritePosition(writer, report, motion, moment);
  }
  const double interval = Interval(report, motion);
  report.due += std::max<SimulatedTime>(1, static_cast<SimulatedTime>(interval * 1e9));
  queue_.push(report);
}

void TrafficReports::WritePosition(SentenceWriter& writer, const Report& report,
                                   const TargetMotion& motion, const UtcMoment& moment) {
  const TargetIdentity& identity = traffic_.Identity(report.target);
  const GeoPoint position = map_.ToGeo(motion.place);
  ++slot_;
  switch (identity.kind) {
    case TargetKind::ClassA: {
      const bool turning = std::fabs(motion.rateOfTurn) > kTurningRate;
      MessageValues values = PositionReport(turning ? 3 : 1, identity, position, motion.speed,
                                            motion.course, motion.rateOfTurn);
      values.Set(Accuracy, report.target % 2);
      values.Set(Timestamp, moment.second);
      // Id 3 is sent in slots taken at random: increment 0, one slot, not kept.
      values.Set(RadioStatus, turning ? 0 : SlotState(slot_, moment));
      sentences_.Write(writer, "!AIVDM", kPositionReportLayout, values);
      break;
    }
    case TargetKind::ClassB:
      sentences_.Write(writer, "!AIVDM", kClassBPositionLayout,
                       ClassBPosition(identity, position, motion, moment));
      break;
    case TargetKind::AidToNavigation:
      sentences_.Write(writer, "!AIVDM", kAidToNavigationLayout,
                       AidToNavigation(identity, position, moment));
      break;
    case TargetKind::BaseStation:
      sentences_.Write(writer, "!AIVDM", kBaseStationLayout,
                       BaseStation(identity, position, moment, SlotState(slot_, moment)));
      break;
  }
}

void TrafficReports::WriteStatic(SentenceWriter& writer, const Report& report,
                                 const TargetMotion& motion, const UtcMoment& moment) {
  const TargetIdentity& identity = traffic_.Identity(report.target);
  if (identity.kind == TargetKind::ClassA) {
    sentences_.Write(writer, "!AIVDM", kStaticVoyageLayout, StaticVoyageData(identity, moment), 2);
    return;
  }
  if (identity.extendedReport) {
    MessageValues values = Begin(19, identity);
    SetPlace(values, map_.ToGeo(motion.place));
    SetMotion(values, motion.speed, motion.course);
    SetSize(values, identity);
    values.Set(TrueHeading, kNoHeading);
    values.Set(Timestamp, moment.second);
    values.Set(Name, identity.name);
    values.Set(ShipType, identity.shipType);
    values.Set(PositionDevice, kPositionDeviceGPS);
    sentences_.Write(writer, "!AIVDM", kClassBExtendedLayout, values, 2);
    return;
  }
  MessageValues partA = Begin(24, identity);
  partA.Set(Name, identity.name);
  sentences_.Write(writer, "!AIVDM", kStaticPartALayout, partA);
  MessageValues partB = Begin(24, identity);
  SetSize(partB, identity);
  partB.Set(PartNumber, 1);
  partB.Set(ShipType, identity.shipType);
  partB.Set(Manufacturer, std::string_view("XYZ"));
  partB.Set(UnitModel, 3);
  partB.Set(SerialNumber, 5000 + report.target);
  partB.Set(CallSign, identity.callSign);
  partB.Set(PositionDevice, kPositionDeviceGPS);
  sentences_.Write(writer, "!AIVDM", kStaticPartBLayout, partB);
}

void OwnReports::Write(SentenceWriter& writer, const VesselState& vessel, const ReceiverFix& fix,
                       const UtcMoment& moment) {
  constexpr int kStaticEvery = 36;
  if (count_ % kStaticEvery == 0) {
    sentences_.Write(writer, "!AIVDO", kStaticVoyageLayout, StaticVoyageData(identity_, moment), 2);
  }
  MessageValues values =
      PositionReport(1, identity_, fix.position, fix.speed, fix.course, vessel.rateOfTurn);
  if (fix.Usable()) {
    values.Set(Accuracy, fix.Differential() ? 1 : 0);
    values.Set(Timestamp, moment.second);
  } else {
    values.Set(Longitude, kNoLongitude);
    values.Set(Latitude, kNoLatitude);
    values.Set(SpeedOverGround, 1023);
    values.Set(CourseOverGround, 3600);
    values.Set(Timestamp, kNoTimestamp);
  }
  values.Set(TrueHeading, WholeHeading(vessel.heading));
  values.Set(RadioStatus, SlotState(count_, moment));
  sentences_.Write(writer, "!AIVDO", kPositionReportLayout, values);
  ++count_;
}

}  // namespace fathomline::simulator
