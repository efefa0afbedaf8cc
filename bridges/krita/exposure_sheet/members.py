"""The members of the host as they stand on the bus: their names in exact letter case, their types, and which routine
of the host does their work."""

from PyQt5.QtCore import QByteArray
from PyQt5.QtDBus import QDBusUnixFileDescriptor

from .host import BLUE, GREEN, RED

SERVICE = "Vellumark.Vellumark_Class"
PATH = "/Vellumark/Vellumark_Class"
INTERFACE = "Vellumark.Vellumark_Class"
DESCRIPTORS = INTERFACE + ".Descriptors"
FORM = "Vellumark.Form"
ERROR = "Vellumark.Error.Failed"

# Name, types of the arguments, type of the result, routine. A frame may be whole or not, so that member stands here
# twice.
MEMBERS = (
    ("Vel_GetAppDir", (), str, "app_dir"),
    ("Vel_WallpaperFilename", (), str, "wallpaper"),
    ("Vel_GetFrameRate", (), str, "rate"),
    ("vel_SetFrameRate", (float,), None, "set_rate"),
    ("vel_BufferWidth", (), int, "width"),
    ("vel_BufferHeight", (), int, "height"),
    ("vel_GetTotalFrames", (), int, "total_frames"),
    ("Vel_GotoFrame", (int,), None, "go_to_frame"),
    ("Vel_GotoFrame", (float,), None, "go_to_frame"),
    ("Vel_GotoFrameAdv", (int, int), None, "go_to_buffer"),
    ("vel_CreateAnimAdv", (int, int), None, "create_animation"),
    ("vel_StatusOpen", (str,), None, "status_open"),
    ("vel_Status", (float,), None, "status_show"),
    ("vel_StatusClose", (), None, "status_close"),
)
GETTERS = (("vel_GetRbuffer", RED), ("vel_GetGbuffer", GREEN), ("Vel_GetBbuffer", BLUE))
SETTERS = (("vel_SetRbuffer", RED), ("vel_SetGBuffer", GREEN), ("vel_SetBBuffer", BLUE))

# The empty value of each result, which is given up for the error when a member fails.
NOTHING = {str: str, int: int, QByteArray: QByteArray, QDBusUnixFileDescriptor: QDBusUnixFileDescriptor}
