#include "windows/statistics_snr_window.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/format.h"
#include "views/definitions.h"
#include "windows/statistics_columns.h"

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{600, 3600, 12000, 8000};
constexpr std::array kFeeds = {SentenceType::GSV};
constexpr int kSatelliteColumns = 32;
constexpr std::string_view kEmptyCell = "     n/a";

}  // namespace

// The head of column k is k itself and, where there is a picture for it, "/" and the PRN. The grids
// are fed by the satellite groups in the same order; the last one has none.
struct frmStatisticsSNR::Constellation {
  std::string_view frame;
  std::string_view frameCaption;
  std::string_view grid;
  std::string_view firstHead;
  int prnLessColumn;
  std::string_view prnPicture;
};

constexpr std::array<frmStatisticsSNR::Constellation, 5> frmStatisticsSNR::kConstellations = {{
    {"frameGSV_GPS", "GSV/GPS SNR Statistics", "fgGSV_GPS", "PRN", 0, ""},
    {"frameGSV_SBAS", "GSV/SBAS SNR Statistics", "fgGSV_SBAS", "id / PRN", 32, "000"},
    {"frameGSV_GLO", "GSV/GLONASS SNR Statistics", "fgGSV_GLO", "id / PRN", 64, "00"},
    {"frameGSV_BEI", "GSV/BEIDOU SNR Statistics", "fgGSV_BEI", "id / PRN", 100, "00"},
    {"frameGSV_GAL", "GSV/GALILEO SNR Statistics", "fgGSV_GAL", "id / PRN", 150, "00"},
}};

frmStatisticsSNR::ConstellationGrid::ConstellationGrid(Frame& parent, const Constellation& table)
    : design(table),
      frame(parent, table.frame, table.frameCaption),
      grid(frame, table.grid, kStatisticsRows, kSatelliteColumns + 1) {}

std::deque<frmStatisticsSNR::ConstellationGrid> frmStatisticsSNR::MakeGrids(Frame& parent) {
  std::deque<ConstellationGrid> grids;
  for (const Constellation& design : kConstellations) grids.emplace_back(parent, design);
  return grids;
}

frmStatisticsSNR::frmStatisticsSNR(const ViewSurroundings& surroundings, int system,
                                   const Statistics& statistics)
    : SystemView(surroundings, system,
                 {.name = "frmStatisticsSNR",
                  .caption = "Statistics SNR ",
                  .place = kDefaultPlace,
                  .placeKey = "StatisticsSNR",
                  .placeOfItsOwn = false,
                  .icon = ViewIcon::OfEverySystem,
                  .flag = WindowFlag::StatisticsSNR,
                  .feeds = kFeeds}),
      statistics_(statistics) {
  std::vector<Layout> rows;
  for (ConstellationGrid& grid : grids_) rows.push_back(Layout::Box(grid.frame, grid.grid));
  SetContent(Layout::Box(frameMain, Layout::Column(std::move(rows))));
}

Grid& frmStatisticsSNR::GridOf(std::size_t constellation) {
  if (constellation >= grids_.size()) Raise(FaultNumber::OutOfRange);
  return grids_[constellation].grid;
}

void frmStatisticsSNR::LoadView() {
  due_ = false;
  for (ConstellationGrid& grid : grids_) LayOutGrid(grid);
  if (records_.Offline()) UpdateStatisticsView(SentenceType::GSV);
}

void frmStatisticsSNR::LayOutGrid(ConstellationGrid& grid) {
  grid.frame.SetVisible(false);
  WriteStatisticsCaptions(grid.grid, PercentileKind::Above);
  grid.grid.Set(0, 0, grid.design.firstHead);
  for (int column = 1; column <= kSatelliteColumns; ++column) {
    std::string head = Format(column, "00");
    if (!grid.design.prnPicture.empty()) {
      head += "/" + Format(column + grid.design.prnLessColumn, grid.design.prnPicture);
    }
    grid.grid.Set(0, column, head);
    for (int row = 1; row < kStatisticsRows; ++row) grid.grid.Set(row, column, kEmptyCell);
  }
  DefineHeads(grid.grid, DefinedTable::SNR);
}

void frmStatisticsSNR::UpdateStatisticsView(SentenceType type) {
  if (type == SentenceType::GSV && Setup().AnalyseGSV) due_ = true;
}

void frmStatisticsSNR::Refresh() {
  if (!std::exchange(due_, false)) return;
  const auto& groups = statistics_[Index()].Satellites;
  for (std::size_t g = 0; g < groups.size(); ++g) {
    const std::span<const SNRStat> group(groups[g].data(), kSatelliteColumns);
    const bool seen = std::any_of(group.begin(), group.end(), [](const SNRStat& stat) {
      return stat.Stat.Count > 0 || stat.RejectedCount > 0;
    });
    if (!seen) continue;
    grids_[g].frame.SetVisible(true);
    int column = 0;
    for (const SNRStat& stat : group) ShowSNRColumn(grids_[g].grid, stat, ++column);
  }
}

}  // namespace fathomline
