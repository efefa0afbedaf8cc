#include "sheet/SheetDocument.h"

#include "audio/sample_store.h"
#include "sheet/Form3.h"
#include "sheet/timing.h"

namespace sheet {

platform::Flag GridReady = platform::kFalse;
CellTable SheetCells;

std::optional<double> CalcTime() { return SecondsOfSound(audio::LoadedSound()); }
double FrameRate() { return platform::NumberAtStart(form3->Text7.Text()); }
std::int32_t TrackFramesNow() { return TrackFrames(FrameRate(), CalcTime().value_or(0)); }

}  // namespace sheet
