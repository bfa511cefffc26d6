// The columns that the figures are made of, in order of arrival: the epoch and the value of each
// sample, 12 bytes for a value, by the name that sent it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "trial/ledger.h"
#include "trial/trial_clock.h"
#include "trial/trial_reader.h"

namespace fathomline::trial {

// Places of one talker and type. NaN stands for what was not sent.
struct PositionSamples {
  std::string name;
  SentenceType type{};
  std::vector<Epoch> epochs;
  std::vector<double> latitude, longitude;   // degrees, both or none
  std::vector<double> altitude, separation;  // metres; empty of a type that has no heights
  std::vector<std::uint8_t> quality;         // as in GGA, whether there is a place or not

  std::size_t size() const { return epochs.size(); }
};

// Angles, depths or speeds of one talker and type.
struct ValueSamples {
  std::string name;
  std::vector<Epoch> epochs;
  std::vector<double> values;
};

// The deviations that a receiver claims in GST, in metres; NaN for what was not sent.
struct ClaimSamples {
  std::string name;
  std::vector<Epoch> epochs;
  std::vector<double> north, east, up;
};

// One column of samples for each name.
template <class Column>
class ByName {
 public:
  Column& Of(Ledger::Name name, const Ledger& ledger) {
    if (name >= places_.size()) places_.resize(name + 1, kNone);
    if (places_[name] == kNone) {
      places_[name] = columns_.size();
      columns_.emplace_back().name = ledger.NameOf(name);
    }
    return columns_[places_[name]];
  }
  const std::vector<Column>& Columns() const { return columns_; }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::vector<std::size_t> places_;
  std::vector<Column> columns_;
};

class Samples {
 public:
  // A sentence that is used, whose epoch is there.
  void Take(Ledger::Name name, const Sentence& sentence, Epoch epoch, const Ledger& ledger);

  const std::vector<PositionSamples>& Positions() const { return positions_.Columns(); }
  const std::vector<ClaimSamples>& Claims() const { return claims_.Columns(); }
  const std::vector<ValueSamples>& Headings() const { return headings_.Columns(); }
  const std::vector<ValueSamples>& Pitches() const { return pitches_.Columns(); }
  const std::vector<ValueSamples>& Rolls() const { return rolls_.Columns(); }
  const std::vector<ValueSamples>& Depths() const { return depths_.Columns(); }  // m
  const std::vector<ValueSamples>& RatesOfTurn() const {
    return ratesOfTurn_.Columns();
  }  // deg/min
  const std::vector<ValueSamples>& SpeedsOverGround() const { return overGround_.Columns(); }  // kn
  const std::vector<ValueSamples>& SpeedsThroughWater() const { return throughWater_.Columns(); }

  std::size_t Bytes() const;

 private:
  ByName<PositionSamples> positions_;
  ByName<ClaimSamples> claims_;
  ByName<ValueSamples> headings_, pitches_, rolls_, depths_, ratesOfTurn_, overGround_,
      throughWater_;
};

}  // namespace fathomline::trial
