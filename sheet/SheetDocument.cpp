#include "sheet/SheetDocument.h"

#include "audio/sample_store.h"
#include "sheet/Form3.h"
#include "sheet/timing.h"

namespace sheet {

platform::Flag GridReady = platform::kFalse;
CellTable SheetCells;

std::optional<double> CalcTime() { return audio::SecondsOfSound(audio::LoadedSound()); }
// Asking for the rate must not load the dialog, as it may happen while the main window loads or closes.
double FrameRate() { return form3.Hold().Rate(); }
std::int32_t TrackFramesNow() { return TrackFrames(FrameRate(), CalcTime().value_or(0)); }

}  // namespace sheet
