// frmNumerics: the latest value of every field of every analysed sentence of one system.
#pragma once

#include <deque>

#include "base/settings.h"
#include "records/records.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "toolkit/window.h"
#include "windows/numerics_grids.h"
#include "windows/numerics_values.h"

namespace fathomline {

class frmNumerics : public Window {
 public:
  frmNumerics(Desktop& desktop, int system, Records& records, SettingsStore& settings);

  // A sentence of the type has been decoded. Keeps a copy, since the next sentence overwrites the
  // record; the texts are written when somebody looks.
  void UpdateNumerics(SentenceType type);

  void Refresh() override;

  // The grid of a sentence, such as fgGGA. Raises OutOfRange for a type that has none.
  Grid& GridOf(SentenceType type);

 protected:
  void Load() override;
  void Unload() override;

 private:
  struct SentenceFrame {
    SentenceFrame(Window& window, const NumericsGrid& table);
    const NumericsGrid& design;
    Frame frame;
    std::deque<Grid> grid;    // one, or none
    std::deque<Label> label;  // the other way round
    NumericsRecord latest;
    bool due = false;
  };

  static std::deque<SentenceFrame> MakeFrames(Window& window);
  void LayOutFrames();
  SentenceFrame* Find(SentenceType type);

  Records& records_;
  SettingsStore& settings_;
  std::deque<SentenceFrame> frames_ = MakeFrames(*this);
};

}  // namespace fathomline
