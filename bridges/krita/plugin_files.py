"""Where the plug-in stands for the user's own Krita, and what it consists of."""

import os

HERE = os.path.dirname(os.path.abspath(__file__))
HOUSE = os.path.dirname(os.path.dirname(HERE))
NAME = "exposure_sheet"
SWITCH = f"enable_{NAME}"
WALLPAPERS = ("night.png", "slate.png")


def data_folder():
    return os.path.join(os.environ.get("XDG_DATA_HOME") or os.path.expanduser("~/.local/share"), "krita")


def settings_file():
    return os.path.join(os.environ.get("XDG_CONFIG_HOME") or os.path.expanduser("~/.config"), "kritarc")


def placed(folder):
    """(what it is here, where it goes below Krita's data folder) of all that is installed."""
    return ((os.path.join(HERE, NAME), os.path.join(folder, "pykrita", NAME)),
            (os.path.join(HERE, NAME + ".desktop"), os.path.join(folder, "pykrita", NAME + ".desktop")),
            (os.path.join(HERE, NAME + ".action"), os.path.join(folder, "actions", NAME + ".action")))


def colors_file():
    """The settings that the plug-in writes for the sheet."""
    return os.path.join(os.path.dirname(settings_file()), "vellumark.ini")


def switch(on):
    """Ticks or unticks the plug-in in Krita's plug-in manager. A group that is left empty goes with it."""
    path = settings_file()
    try:
        with open(path, encoding="utf-8") as file:
            lines = file.read().splitlines()
    except FileNotFoundError:
        lines = []
    lines = [line for line in lines if line.partition("=")[0] != SWITCH]
    if on:
        if "[python]" not in lines:
            lines += ["", "[python]"] if lines else ["[python]"]
        lines.insert(lines.index("[python]") + 1, SWITCH + "=true")
    elif not os.path.exists(path):
        return
    else:
        lines = without_empty_group(lines, "[python]")
        if not lines:
            os.remove(path)
            return
    os.makedirs(os.path.dirname(path), exist_ok=True)
    beside = path + ".new"
    with open(beside, "w", encoding="utf-8") as file:
        file.write("".join(line + "\n" for line in lines))
    os.replace(beside, path)


def without_empty_group(lines, head):
    if head not in lines:
        return lines
    place = lines.index(head)
    behind = place + 1
    while behind < len(lines) and not lines[behind]:
        behind += 1
    if behind < len(lines) and not lines[behind].startswith("["):
        return lines
    while place > 0 and behind == len(lines) and not lines[place - 1]:
        place -= 1
    return lines[:place] + lines[behind:]
