#include "trial/trial_json.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <type_traits>
#include <utility>

namespace fathomline::trial {
namespace {

using Json = nlohmann::ordered_json;

Json Of(Count count, int) {
  return count;
}
Json Of(bool flag, int) {
  return flag;
}
Json Of(const std::string& text, int) {
  return text;
}
Json Of(double value, int decimals) {
  return std::isfinite(value) ? Json(Rounded(value, decimals)) : Json();
}
Json Of(const Moment& moment, int) {
  return ToText(moment);
}
template <class Type>
Json Of(const std::optional<Type>& value, int decimals = 0);
template <class Type>
Json Of(const std::vector<Type>& elements, int decimals = 0);
template <class Block>
requires requires {
  Block::Layout();
}
Json Of(const Block& block, int decimals = 0);

template <class Type>
Json Of(const std::optional<Type>& value, int decimals) {
  return value ? Of(*value, decimals) : Json();
}

template <class Type>
Json Of(const std::vector<Type>& elements, int decimals) {
  Json array = Json::array();
  for (const Type& element : elements) array.push_back(Of(element, decimals));
  return array;
}

template <class Block>
requires requires {
  Block::Layout();
}
Json Of(const Block& block, int) {
  Json object = Json::object();
  if constexpr (requires { block.why; }) {
    if (!block.why.empty()) {
      // An angle keeps its name, by which its list is searched.
      if constexpr (std::is_same_v<Block, AngleErrors>) {
        if (!block.name.empty()) object = {{"name", block.name}, {"n", block.n}};
      }
      object["why"] = block.why;
      return object;
    }
  }
  std::apply(
      [&](const auto&... figure) {
        ((object[std::string(figure.key)] = Of(block.*figure.member, figure.decimals)), ...);
      },
      Block::Layout());
  return object;
}

Json Why(std::string_view why) {
  return {{"why", why}};
}

Json Of(const Reference& reference) {
  Json object = {{"kind", ToText(reference.kind)},
                 {"name", Of(reference.name)},
                 {"lat_deg", Of(reference.latitude, decimals::kPlace)},
                 {"lon_deg", Of(reference.longitude, decimals::kPlace)},
                 {"height_m", Of(reference.height, decimals::kLength)}};
  if (!reference.why.empty()) object["why"] = reference.why;
  return object;
}

Json Of(const StreamFigures& stream) {
  return {{"name", stream.name},
          {"chosen", stream.chosen},
          {"epochs", stream.epochs},
          {"fixes", stream.fixes},
          {"heights", ToText(stream.heights)},
          {"interval_s", Of(stream.interval, decimals::kSeconds)},
          {"conflicting", stream.conflicting},
          {"matched", Of(stream.matched)},
          {"median_distance_m", Of(stream.medianDistance, decimals::kLength)}};
}

Json Of(const Horizontal& horizontal) {
  return {{"reference", Of(horizontal.reference)},
          {"mean", Of(horizontal.mean)},
          {"ellipse95", Of(horizontal.ellipse)}};
}

Json Of(const Vertical& vertical) {
  return {{"reference", Of(vertical.reference)}, {"mean", Of(vertical.mean)}};
}

Json Of(const QualityFigures& quality) {
  return {{"quality", quality.quality},
          {"epochs", quality.epochs},
          {"share", Of(quality.share, decimals::kShare)},
          {"horizontal", Of(quality.horizontal)},
          {"vertical", Of(quality.vertical)}};
}

Json Of(const Claim& claim) {
  if (!claim.why.empty()) return Why(claim.why);
  return {{"talker", Of(claim.talker)},
          {"north", Of(claim.north)},
          {"east", Of(claim.east)},
          {"up", Of(claim.up)}};
}

Json Of(const SeriesFigures& series, std::string_view unit) {
  const auto key = [&](const char* figure) { return figure + std::string(unit); };
  constexpr int kDecimals = decimals::kLength;
  Json object = {{"name", series.name}, {"n", series.n}};
  object[key("mean_")] = Of(series.mean, kDecimals);
  object[key("std_")] = Of(series.std, kDecimals);
  object[key("least_")] = Of(series.least, kDecimals);
  object["least_at"] = Of(series.leastAt);
  object[key("greatest_")] = Of(series.greatest, kDecimals);
  object["greatest_at"] = Of(series.greatestAt);
  object["gaps"] = Of(series.gaps);
  return object;
}

Json Of(const SignalFigures& signal) {
  Json bins = Json::array();
  for (const ElevationBin& bin : signal.byElevation) bins.push_back(Of(bin));
  return {{"signal", Of(signal.signal)}, {"cn0_by_elevation", std::move(bins)}};
}

Json Of(const ConstellationFigures& constellation) {
  Json signals = Json::array();
  for (const SignalFigures& signal : constellation.signals) signals.push_back(Of(signal));
  return {{"name", constellation.name},
          {"epochs", constellation.epochs},
          {"in_view", Of(constellation.inView)},
          {"in_use", Of(constellation.inUse)},
          {"signals", std::move(signals)}};
}

Json Of(const Satellites& satellites) {
  if (!satellites.why.empty()) return Why(satellites.why);
  Json constellations = Json::array();
  for (const ConstellationFigures& constellation : satellites.constellations) {
    constellations.push_back(Of(constellation));
  }
  return {{"groups_whole", satellites.groupsWhole},
          {"groups_broken", satellites.groupsBroken},
          {"constellations", std::move(constellations)},
          {"satellites", Of(satellites.satellites)}};
}

Json Of(const SystemFigures& system);
Json Of(const PairFigures& pair);
Json Of(const LimitFigures& limit);

template <class Type>
Json ArrayOf(const std::vector<Type>& elements) {
  Json array = Json::array();
  for (const Type& element : elements) array.push_back(Of(element));
  return array;
}

Json Of(const SystemFigures& system) {
  Json object = {{"name", system.name},
                 {"reference", Of(system.reference)},
                 {"stream", Of(system.stream)},
                 {"moving", system.moving},
                 {"streams", ArrayOf(system.streams)},
                 {"ledger", Of(system.ledger)},
                 {"availability", Of(system.availability)},
                 {"horizontal", Of(system.horizontal)},
                 {"vertical", Of(system.vertical)},
                 {"by_quality", ArrayOf(system.byQuality)},
                 {"gst", Of(system.gst)},
                 {"heading", Of(system.heading)},
                 {"pitch", Of(system.pitch)},
                 {"roll", Of(system.roll)}};
  for (const SeriesList& list : system.series) {
    Json names = Json::array();
    for (const SeriesFigures& series : list.names) names.push_back(Of(series, list.unit));
    object[std::string(list.key)] = std::move(names);
  }
  object["satellites"] = Of(system.satellites);
  object["ais"] = Of(system.ais);
  return object;
}

Json Of(const PairFigures& pair) {
  return {{"name", pair.name},
          {"of", pair.of},
          {"same_time", pair.sameTime},
          {"interpolated", pair.interpolated},
          {"horizontal", Of(pair.horizontal)},
          {"vertical", Of(pair.vertical)},
          {"heading", Of(pair.heading)}};
}

Json Of(const LimitFigures& limit) {
  return {{"limit", limit.limit},
          {"system", Of(limit.system)},
          // Rounded as the figure that it is.
          {"value", limit.value ? Json(*limit.value) : Json()},
          {"kept", limit.kept}};
}

}  // namespace

nlohmann::ordered_json ToJson(const TrialFigures& figures) {
  return {{"trial", 1},
          {"meta", Of(figures.meta)},
          {"systems", ArrayOf(figures.systems)},
          {"pairs", ArrayOf(figures.pairs)},
          {"limits", ArrayOf(figures.limits)},
          {"kept", figures.kept}};
}

namespace {

// The shortest digits that read back as the number, which the library's own do not always find.
void WriteNumber(double number, std::string& text) {
  std::array<char, 400> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
  text.append(digits.data(), end.ptr);
}

void WriteJson(const Json& json, std::size_t depth, std::string& text) {
  constexpr std::size_t kIndent = 2;
  if (json.is_number_float()) return WriteNumber(json.get<double>(), text);
  if (!json.is_structured() || json.empty()) {
    // Titles and file names may be any bytes.
    text += json.dump(-1, ' ', false, Json::error_handler_t::replace);
    return;
  }
  text += json.is_array() ? '[' : '{';
  bool isFirst = true;
  for (const auto& [key, value] : json.items()) {
    text += isFirst ? "\n" : ",\n";
    isFirst = false;
    text.append((depth + 1) * kIndent, ' ');
    if (json.is_object()) text += '"' + key + "\": ";
    WriteJson(value, depth + 1, text);
  }
  text += '\n';
  text.append(depth * kIndent, ' ');
  text += json.is_array() ? ']' : '}';
}

}  // namespace

std::string JsonText(const TrialFigures& figures) {
  std::string text;
  WriteJson(ToJson(figures), 0, text);
  return text + '\n';
}

}  // namespace fathomline::trial
