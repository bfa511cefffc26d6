// The engine: everything between a received line and its figures, without a window.
#pragma once

#include "ais/ais_decoder.h"
#include "ais/target_store.h"
#include "analysis/message_driver.h"
#include "analysis/session_report.h"
#include "analysis/statistics.h"
#include "base/clock.h"
#include "base/dialogs.h"
#include "base/files.h"
#include "pipeline/sentence_pipeline.h"
#include "records/records.h"
#include "watch/watch.h"

namespace fathomline {

// Whoever feeds it gives its lines to the pipeline; who follows them is plugged in.
struct Engine {
  Engine(const Clock& clock, Dialogs& dialogs, MessageViews& views, LineObservers& observers)
      : statistics(records, clock),
        ais(clock),
        targets(dialogs),
        driver(records, statistics, clock, dialogs, views),
        pipeline(records, ais, targets, driver, observers, dialogs),
        report(records, statistics, files, clock, dialogs) {}

  Records records;
  FileTable files;
  Statistics statistics;
  AISDecoder ais;
  AISStore targets;
  Watch watch;
  MessageDriver driver;
  SentencePipeline pipeline;
  SessionReport report;
};

}  // namespace fathomline
