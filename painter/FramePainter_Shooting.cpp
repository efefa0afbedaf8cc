#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/HostSession.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "painter/cell_store.h"
#include "painter/wiggle.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/LongWork.h"

namespace painter {
namespace {

using host::HostSession;

constexpr const char* kRetrieveWarning =
    "Warning, retrieving can change your frame list if the order of the original has changed.\n"
    "Add frames to the end of the original, for best results";

struct Wiggle {
  std::int32_t amount;
  std::int32_t size;
};

void CopySamples(const ConstPlanes& from, const Planes& to) {
  const std::size_t samples = from.shape.Samples();
  std::memcpy(to.red, from.red, samples);
  std::memcpy(to.green, from.green, samples);
  std::memcpy(to.blue, from.blue, samples);
}

/// Makes the planes of the roll's frames, one frame after the other, ready for the host.
class RollFrameMaker {
 public:
  /// None if a frame of the host's size is more than the machine holds.
  static std::optional<RollFrameMaker> For(const Retrieval& retrieval) {
    std::optional<CellStore> own = MakeCellStore(FrameShape(retrieval), 2);
    if (!own) return std::nullopt;
    return RollFrameMaker(retrieval, std::move(*own));
  }

  /// The cell as it was retrieved; white for a blank frame and where there is no such cell.
  ConstPlanes Unwiggled(std::int16_t entry) {
    const std::optional<ConstPlanes> cell = FindCell(retrieval_, entry);
    return cell ? *cell : White();
  }

  /// The same with the pixels displaced. Valid until the next call.
  ConstPlanes Wiggled(std::int16_t entry, const Wiggle& wiggle) {
    const ConstPlanes source = Unwiggled(entry);
    const Planes working = CellPlanes(own_, 1);
    CopySamples(source, working);
    WiggleFrame(wiggle.amount, wiggle.size, source, working);
    return ReadOnly(working);
  }

 private:
  RollFrameMaker(const Retrieval& retrieval, CellStore own) : retrieval_(retrieval), own_(std::move(own)) {}

  ConstPlanes White() {
    const Planes white = CellPlanes(own_, 0);
    if (!white_filled_)
      for (std::uint8_t* plane : {white.red, white.green, white.blue})
        std::fill_n(plane, white.shape.Samples(), std::uint8_t{255});
    white_filled_ = true;
    return ReadOnly(white);
  }

  const Retrieval& retrieval_;
  /// A white frame and one to work in. Memory that no frame of the roll needs stays untouched.
  CellStore own_;
  bool white_filled_ = false;
};

/// Lends a plane to the host for the time of the call.
void SendPlane(std::string_view setter, const std::uint8_t* plane, std::size_t samples) {
  HostSession.Call(setter, host::ByteTable{{plane, samples}, nullptr});
}

void SendPlanes(const ConstPlanes& planes) {
  const std::size_t samples = planes.shape.Samples();
  SendPlane("vel_SetRbuffer", planes.red, samples);
  SendPlane("vel_SetGBuffer", planes.green, samples);
  SendPlane("vel_SetBBuffer", planes.blue, samples);
}

void ShootRoll(const FilmRoll& roll, RollFrameMaker& maker, const platform::CheckBox& wiggle_on,
               const Wiggle& wiggle, platform::LongWork& work) {
  const platform::BusyPointer busy;
  const std::int32_t length = roll.RollLength();
  for (std::int32_t f = 0; f < length; ++f) {
    work.Report(f, length);
    const std::int16_t entry = roll.entries[static_cast<std::size_t>(f)];
    HostSession.Call("Vel_GotoFrameAdv", f, std::int16_t{3});
    SendPlanes(wiggle_on.Value() == 1 ? maker.Wiggled(entry, wiggle) : maker.Unwiggled(entry));
    HostSession.Call("vel_Status", 100 * (static_cast<double>(f) / length));
  }
}

}  // namespace

void FramePainter::vl_button1_Click() {
  if (platform::MsgBox(kRetrieveWarning, platform::Buttons::OkCancel, platform::Icon::Information) !=
      platform::Answer::Ok)
    return;
  RetrieveFrames();
  ShowNewFrames();
}

void FramePainter::vl_button2_Click() {
  const Wiggle wiggle{VL_DropDial1.value(), VL_DropDial2.value()};
  if (const std::string refusal = RefusalOfSize(FrameShape(TheRetrieval())); !refusal.empty()) {
    platform::MsgBox(refusal);
    return;
  }
  std::optional<RollFrameMaker> maker = RollFrameMaker::For(TheRetrieval());
  if (!maker) {
    platform::MsgBox("There is not enough memory for a frame of the host's size.");
    return;
  }
  platform::LongWork work;
  HostSession.Call("vel_StatusOpen", std::string("Saving..."));
  HostSession.Call("vel_CreateAnimAdv", TheRoll().RollLength(), std::int16_t{2});
  HostSession.Call("vel_StatusOpen", std::string("Developing..."));
  ShootRoll(TheRoll(), *maker, Check1, wiggle, work);
  HostSession.Call("Vel_GotoFrame", std::int16_t{0});
  HostSession.Call("vel_StatusClose");
}

void FramePainter::vl_button3_Click() { Unload(); }

void FramePainter::Form_Unload(platform::Flag& cancel) {
  if (platform::MsgBox("Exit Frame Painter", platform::Buttons::YesNo, platform::Icon::Information) ==
      platform::Answer::No)
    cancel = platform::kTrue;
}

}  // namespace painter
