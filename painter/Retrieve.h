// The way into the frame painter: from the copy of the host's frames to the dialog.
#pragma once

namespace painter {

/// Copies the host's frames, proposes a length for the roll and hands the dialog to the host.
void LaunchFramePainter();

/// Copies every frame of the host's animation into the store. Leaves the host on frame 0. Fewer than two
/// frames, or no memory for the store: a message, and the store stays as it is, though the host's numbers are
/// already the new ones.
void RetrieveFrames();

/// Makes the host's folder the working directory and touches the noise once there. Throws if the host can't
/// name its folder or the folder is missing.
void EnterHostFolder();

}  // namespace painter
