"""Krita itself on the desk, with the plug-in installed as a user installs it and a probe to look into it."""

import json
import os
import shutil
import subprocess

import dbus

from desk import Window, output, wait_for
from program import HOUSE, environment

BRIDGE = os.path.join(HOUSE, "bridges", "krita")
START_SECONDS = 120


class KritaDesk:
    def __init__(self, tour):
        self.desk = tour.desk
        self.home = os.path.join(tour.homes, "krita")
        self.variables = environment(self.home)
        self.variables["DBUS_SESSION_BUS_ADDRESS"] = self.start_bus(tour)
        self.install()
        self.process = tour.run(["krita", "--nosplash"], self.variables)
        self.bus = dbus.bus.BusConnection(self.variables["DBUS_SESSION_BUS_ADDRESS"])
        self.window = Window(self.desk, wait_for("Krita's window", self.find_window, START_SECONDS))
        wait_for("the probe in Krita", lambda: self.bus.name_has_owner("Krita.Probe"), START_SECONDS)
        self.window.front()
        self.desk.settle()

    @staticmethod
    def find_window():
        """By its class: Krita's windows don't always have a title."""
        return output("xdotool", "search", "--onlyvisible", "--class", "krita").partition("\n")[0]

    def start_bus(self, tour):
        read_end, write_end = os.pipe()
        tour.desk.start(["dbus-daemon", "--session", "--nopidfile", "--nofork", f"--print-address={write_end}"], self.variables,
                        pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as address:
            return address.readline().strip()

    def install(self):
        subprocess.run([os.path.join(BRIDGE, "install")], env=self.variables, check=True, stdout=subprocess.DEVNULL)
        plugins = os.path.join(self.variables["XDG_DATA_HOME"], "krita", "pykrita")
        shutil.copytree(os.path.join(BRIDGE, "tests", "probe"), os.path.join(plugins, "probe"))
        shutil.copy(os.path.join(BRIDGE, "tests", "probe.desktop"), plugins)
        with open(os.path.join(self.variables["XDG_CONFIG_HOME"], "kritarc"), "a", encoding="utf-8") as settings:
            settings.write("enable_probe=true\n")

    def ask(self, expression, seconds=120):
        """What the probe makes of an expression over its functions."""
        answer = self.bus.call_blocking("Krita.Probe", "/Probe", "Krita.Probe", "Evaluate", "s", (expression,),
                                        timeout=seconds)
        return json.loads(str(answer))

    def choose(self, *titles):
        """Goes through Krita's menus with the mouse."""
        self.window.front()
        for depth in range(1, len(titles) + 1):
            place = wait_for("a menu of Krita's", lambda d=depth: self.place(titles[:d]))
            self.desk.click(*place)
            self.desk.settle()

    def place(self, titles):
        x, y = self.ask(f"menu_place(*{list(titles)!r})")
        return (x, y) if x > 0 and y > 0 else None

    def close(self, which):
        before = self.ask(f"close({which!r})")
        wait_for("the document to close", lambda: self.ask("documents()") < before)

    def call(self, member, signature="", *arguments, interface="Vellumark.Vellumark_Class"):
        """Calls the host as a tool does."""
        return self.bus.call_blocking("Vellumark.Vellumark_Class", "/Vellumark/Vellumark_Class", interface, member,
                                      signature, arguments, byte_arrays=True, timeout=120)

    def is_host(self):
        return self.bus.name_has_owner("Vellumark.Vellumark_Class")

    def quit(self):
        self.process.terminate()
        # It has much to put away, and may be short of a processor.
        wait_for("Krita to end", lambda: self.process.poll() is not None, START_SECONDS)
