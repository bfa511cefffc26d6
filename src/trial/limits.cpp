#include "trial/limits.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "trial/strict_fields.h"
#include "trial/trial_json.h"

namespace fathomline::trial {
namespace {

using Json = nlohmann::ordered_json;

// Longer ones stand before those that they begin with.
constexpr std::pair<std::string_view, Limit::Comparison> kComparisons[] = {
    {"<=", Limit::Comparison::LessOrEqual}, {">=", Limit::Comparison::GreaterOrEqual},
    {"==", Limit::Comparison::Equal},       {"<", Limit::Comparison::Less},
    {">", Limit::Comparison::Greater},      {"=", Limit::Comparison::Equal}};

[[noreturn]] void Refuse(std::string_view text, const std::string& reason) {
  throw std::invalid_argument("the limit \"" + std::string(text) + "\" " + reason);
}

// The element of a list by its name or quality, or the value of an object by its key.
const Json* Step(const Json& from, const std::string& key) {
  if (from.is_object()) {
    const auto found = from.find(key);
    return found == from.end() ? nullptr : &*found;
  }
  if (!from.is_array()) return nullptr;
  for (const Json& element : from) {
    if (!element.is_object()) continue;
    for (const char* by : {"name", "quality"}) {
      const auto told = element.find(by);
      if (told == element.end()) continue;
      if (told->is_string() ? told->get_ref<const std::string&>() == key : told->dump() == key) {
        return &element;
      }
    }
  }
  return nullptr;
}

Value FigureAt(const Json& from, const Limit& limit) {
  const Json* at = &from;
  for (const std::string& key : limit.path) {
    at = Step(*at, key);
    if (at == nullptr) return std::nullopt;
  }
  return at->is_number() ? Value(at->get<double>()) : std::nullopt;
}

}  // namespace

Limit ReadLimit(std::string_view text) {
  text = TrimLine(text);
  Limit limit;
  limit.text = text;
  const std::size_t at = text.find_first_of("<>=");
  if (at == std::string_view::npos) Refuse(text, "compares nothing; write path<=number");
  std::string_view path = TrimLine(text.substr(0, at));
  std::string_view number = text.substr(at);
  for (const auto& [sign, comparison] : kComparisons) {
    if (!number.starts_with(sign)) continue;
    limit.comparison = comparison;
    number = TrimLine(number.substr(sign.size()));
    break;
  }
  const auto value = ReadStrictNumber(number);
  if (!value) Refuse(text, "has no number behind its comparison");
  limit.number = *value;

  if (const std::size_t colon = path.find(':'); colon != std::string_view::npos) {
    limit.system = TrimLine(path.substr(0, colon));
    path = TrimLine(path.substr(colon + 1));
  }
  while (true) {
    const std::size_t dot = path.find('.');
    if (path.substr(0, dot).empty()) Refuse(text, "has no whole path, such as availability.share");
    limit.path.emplace_back(path.substr(0, dot));
    if (dot == std::string_view::npos) break;
    path.remove_prefix(dot + 1);
  }
  if (limit.system && limit.IsOfPairs()) Refuse(text, "names a system and a pair");
  return limit;
}

std::vector<Limit> ReadLimits(std::string_view content) {
  std::vector<Limit> limits;
  for (int line = 1; !content.empty(); ++line) {
    const std::size_t end = content.find('\n');
    const std::string_view text =
        TrimLine(content.substr(0, end).substr(0, content.substr(0, end).find('#')));
    content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    if (text.empty()) continue;
    try {
      limits.push_back(ReadLimit(text));
    } catch (const std::invalid_argument& refused) {
      throw std::invalid_argument("line " + std::to_string(line) + ": " + refused.what());
    }
  }
  return limits;
}

bool Keeps(const Limit& limit, double value) {
  switch (limit.comparison) {
    case Limit::Comparison::Less:
      return value < limit.number;
    case Limit::Comparison::LessOrEqual:
      return value <= limit.number;
    case Limit::Comparison::Equal:
      return value == limit.number;
    case Limit::Comparison::GreaterOrEqual:
      return value >= limit.number;
    case Limit::Comparison::Greater:
      return value > limit.number;
  }
  return false;
}

void JudgeLimits(TrialFigures& figures, std::vector<Limit> limits) {
  figures.limits.clear();
  figures.kept = true;
  if (limits.empty()) return;
  std::stable_sort(limits.begin(), limits.end(),
                   [](const Limit& a, const Limit& b) { return a.text < b.text; });
  const Json json = ToJson(figures);
  const auto judge = [&](const Limit& limit, const Json& from, std::optional<std::string> system) {
    LimitFigures& judged = figures.limits.emplace_back();
    judged.limit = limit.text;
    judged.system = std::move(system);
    judged.value = FigureAt(from, limit);
    judged.kept = judged.value && Keeps(limit, *judged.value);
    figures.kept = figures.kept && judged.kept;
  };
  for (const Limit& limit : limits) {
    if (limit.IsOfPairs()) {
      judge(limit, json, std::nullopt);
      continue;
    }
    for (const Json& system : json["systems"]) {
      const auto& name = system["name"].get_ref<const std::string&>();
      if (!limit.system || *limit.system == name) judge(limit, system, name);
    }
  }
}

}  // namespace fathomline::trial
