// The sentences of the GNSS receiver, in the forms of NMEA 0183 version 2.3.
#pragma once

#include "simulator/receiver.h"
#include "simulator/sentence_writer.h"

namespace fathomline::simulator {

// Writes the sentences of one kind, ZDA to GST, and notes what they say. Does nothing for others.
void WriteGNSSSentence(SentenceKind kind, SentenceWriter& writer, const GNSSReceiver& receiver,
                       const UtcMoment& moment, SimulationTruth& truth);

}  // namespace fathomline::simulator
