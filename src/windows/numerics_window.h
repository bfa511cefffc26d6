// frmNumerics: the latest value of every field of every analysed sentence of one system.
#pragma once

#include <deque>
#include <memory>

#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "views/system_view.h"
#include "windows/numerics_values.h"

namespace fathomline {

class frmNumerics : public SystemView {
 public:
  frmNumerics(const ViewSurroundings& surroundings, int system);

  // A sentence of the type has been decoded. Keeps a copy, since the next sentence overwrites the
  // record; the texts are written when somebody looks.
  void UpdateNumerics(SentenceType type);

  void Refresh() override;

  // The grid of a sentence, such as fgGGA. Raises OutOfRange for a type that has none.
  Grid& GridOf(SentenceType type);

 protected:
  void LoadView() override;

 private:
  struct SentenceFrame {
    SentenceFrame(Window& window, std::unique_ptr<SentenceNumerics> shown);
    std::unique_ptr<SentenceNumerics> numerics;
    SentenceType type;
    Frame frame;
    std::deque<Grid> grid;    // one, or none
    std::deque<Label> label;  // the other way round
    bool due = false;
  };

  static std::deque<SentenceFrame> MakeFrames(Window& window);
  SentenceFrame* Find(SentenceType type);

  std::deque<SentenceFrame> frames_ = MakeFrames(*this);
};

}  // namespace fathomline
