#include "painter/Retrieve.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/HostSession.h"
#include "host/variant.h"
#include "painter/FPOptions.h"
#include "painter/cell_store.h"
#include "painter/noise.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/LongWork.h"
#include "platform/memory.h"
#include "sheet/SheetDocument.h"
#include "sheet/timing.h"

namespace painter {
namespace {

using host::HostSession;

std::int32_t AskForLong(std::string_view member) { return host::AsLong(HostSession.Call(member), member); }

void CopyPlane(std::string_view getter, std::size_t samples, std::uint8_t* plane) {
  const host::Variant value = HostSession.Call(getter);
  std::memcpy(plane, host::AsTable(value, samples, getter).data(), samples);
}

// A host that can't show the progress is no reason to stop.

void OpenStatus() {
  platform::Guarded([] {
    HostSession.Call("vel_StatusOpen", std::string("Retrieving frames..."));
    HostSession.Call("vel_Status", std::int32_t{0});
  });
}

void ShowStatus(double percent) {
  platform::Guarded([&] { HostSession.Call("vel_Status", percent); });
}

void ReadNumbers(Retrieval& retrieval) {
  retrieval.FrameWidth = AskForLong("vel_BufferWidth");
  retrieval.FrameHeight = AskForLong("vel_BufferHeight");
  retrieval.CellCount = AskForLong("vel_GetTotalFrames");
}

/// A store for the host's frames, if there is memory to fill it once the old one is gone.
std::optional<CellStore> MakeStoreThatFits(const Retrieval& retrieval, double bytes) {
  const double freed = StoreBytes(retrieval.cells.shape, retrieval.cells.count);
  if (bytes > platform::FreeMemoryBytes() + freed) return std::nullopt;
  return MakeCellStore(FrameShape(retrieval), retrieval.CellCount);
}

/// False, after a message, if there is no memory for the frames to come, or no such frames. The old store
/// goes only once the new one is had: the memory of a new one isn't taken up before it is written.
bool RenewStore(Retrieval& retrieval) {
  if (const std::string refusal = RefusalOfSize(FrameShape(retrieval)); !refusal.empty()) {
    platform::MsgBox(refusal);
    return false;
  }
  const double bytes = StoreBytes(FrameShape(retrieval), retrieval.CellCount);
  auto fresh = MakeStoreThatFits(retrieval, bytes);
  if (!fresh) {
    platform::MsgBox("There is not enough memory for the frames. " + platform::MemoryFigures(bytes));
    return false;
  }
  // A cell counts as there once it is filled, so the count grows with each one.
  fresh->count = 0;
  retrieval.cells = std::move(*fresh);
  return true;
}

void CopyFrame(CellStore& store, std::int32_t frame) {
  HostSession.Call("Vel_GotoFrameAdv", frame, std::int16_t{3});
  const Planes planes = CellPlanes(store, frame);
  const std::size_t samples = store.shape.Samples();
  CopyPlane("vel_GetRbuffer", samples, planes.red);
  CopyPlane("vel_GetGbuffer", samples, planes.green);
  CopyPlane("Vel_GetBbuffer", samples, planes.blue);
  store.count = frame + 1;
}

void CopyFrames(Retrieval& retrieval, platform::LongWork& work) {
  for (std::int32_t i = 0; i < retrieval.CellCount; ++i) {
    work.Report(i, retrieval.CellCount);
    CopyFrame(retrieval.cells, i);
    ShowStatus(100.0 / retrieval.CellCount * i);
  }
  HostSession.Call("Vel_GotoFrame", std::int16_t{0});
}

void ProposeLength() {
  const std::int32_t frames = sheet::WholeFrames(sheet::FrameRate(), sheet::CalcTime().value_or(0));
  if (frames > 0) fp_options->Text1.SetText(std::to_string(frames));
  // Selected, so that typed digits replace the proposal.
  fp_options->Text1.SelectAll();
}

}  // namespace

void RetrieveFrames() {
  platform::LongWork work;
  Retrieval& retrieval = TheRetrieval();
  ReadNumbers(retrieval);
  const platform::BusyPointer busy;
  OpenStatus();
  if (retrieval.CellCount < 2) {
    platform::MsgBox("No animation");
  } else if (RenewStore(retrieval)) {
    CopyFrames(retrieval, work);
  }
  HostSession.Call("vel_StatusClose");
}

void EnterHostFolder() {
  platform::ChangeDirectory(host::AsText(HostSession.Call("Vel_GetAppDir"), "Vel_GetAppDir"));
  const float origin[3] = {0, 0, 0};
  noise3(origin);
}

void LaunchFramePainter() {
  // The painter needs nothing from that folder, so it may well be missing.
  platform::Guarded(EnterHostFolder);
  RetrieveFrames();
  // If nothing was ever retrieved, there is nothing to shoot.
  if (TheRetrieval().cells.count == 0) return;
  ProposeLength();
  HostSession.Call("Vel_SendFormObject", &FPOptionsForm(), std::int16_t{0});
}

}  // namespace painter
