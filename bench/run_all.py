"""Runs the built benchmarks on a virtual display and makes the tables of bench/RESULTS.md from what they tell.

A benchmark takes part by its label: "beside|operation|peer" with the counters ours, theirs, ratio, goal,
times_faster and noise, or "grows|operation|unit" with size, seconds and megabytes (bench/beside.h). All others are
run by hand.
"""

import json
import math
import os
import pathlib
import platform
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "bench"
RESULTS = ROOT / "bench" / "RESULTS.md"
README = ROOT / "README.md"

# The rows that a user feels, by the beginning of the operation; README.md shows them between two marks.
FELT = ["Start to", "Open a wave file, stereo", "Advance 500 rows", "Retrieve 40", "Wiggle, 12 frames"]
FELT_BEGIN, FELT_END = "<!-- Written by ./run-bench -->\n", "<!-- End -->\n"

# The name of the program, and which of its benchmarks: those that have a label of ours.
COMPARED = [
    ("wave-file-bench", "."),
    ("start-bench", "."),
    ("scale-bench", "."),
    ("frames-bench", "."),
    ("bus-bench", "."),
    ("wiggle-bench", "."),
]
GROWING = "growth-bench"
# At ten frames a second, the last nine hours of sound; each a whole number of seconds, so that the tracks fit it.
ROWS = [3_240, 32_400, 324_000]
SECONDS_AT_MOST = 600

# Worse than linear is a fault; a row advance must not grow with the rows. Measured times are never exact.
MOST_EXPONENT = 1.1
MOST_EXPONENT_OF_AN_ADVANCE = 0.1


def run(name, arguments, environment, missing):
    """The benchmarks of one program that carry a label of ours; what fails is left out, and added to `missing`."""
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        command = [BUILD / name, f"--benchmark_out={out.name}", "--benchmark_out_format=json", *arguments]
        print("==", name, *arguments, flush=True)
        try:
            subprocess.run(command, env=environment, stdout=subprocess.DEVNULL, timeout=SECONDS_AT_MOST, check=False)
            found = json.load(open(out.name, encoding="utf-8"))["benchmarks"]
        except (OSError, ValueError, subprocess.TimeoutExpired) as failure:
            missing.append(f"{name} ({failure})")
            return []
    for entry in found:
        if entry.get("error_occurred"):
            missing.append(f"{entry['name']} ({entry['error_message']})")
    return [entry for entry in found if "|" in entry.get("label", "")]


def time_text(seconds):
    for unit, scale in (("s", 1), ("ms", 1e3), ("µs", 1e6)):
        if seconds * scale >= 1:
            return f"{seconds * scale:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def amount_text(entry, side):
    return f"{entry[side]:.0f} MiB" if "megabytes" in entry else time_text(entry[side])


def goal_of(entry):
    """The goal in words, and whether the ratio meets it."""
    goal, ratio = entry["goal"], entry["ratio"]
    if goal == 0:
        return "", ""
    if entry["times_faster"]:
        return f"at least {goal:g} times as fast", "yes" if ratio >= goal else "no"
    return f"at most {goal:g}", "yes" if ratio <= goal else "no"


def compared_table(entries):
    lines = ["| Operation | Ours | Beside | Theirs | Ratio | Goal | Met | Noise |", "|---|---|---|---|---|---|---|---|"]
    for entry in entries:
        _, operation, peer = entry["label"].split("|")
        goal, met = goal_of(entry)
        lines.append(
            f"| {operation} | {amount_text(entry, 'ours')} | {peer} | {amount_text(entry, 'theirs')} | "
            f"{entry['ratio']:.3g} | {goal} | {met} | ± {entry['noise']:.0f} % |"
        )
    return lines


def exponent(points):
    """The slope of the time over the size, both as logarithms, by least squares."""
    across = [math.log(entry["size"]) for entry in points]
    up = [math.log(entry["seconds"]) for entry in points]
    middle, height = sum(across) / len(across), sum(up) / len(up)
    spread = sum((x - middle) ** 2 for x in across)
    return sum((x - middle) * (y - height) for x, y in zip(across, up)) / spread


def growth_table(entries):
    by_operation = {}
    for entry in entries:
        by_operation.setdefault(entry["label"].split("|")[1], []).append(entry)
    sizes = len(ROWS)
    lines = ["| Operation |" + " Size | Time | Memory |" * sizes + " Exponent | Met |", "|---" * (3 * sizes + 3) + "|"]
    for operation, points in by_operation.items():
        if len(points) != sizes:
            print(f"{operation}: sizes are missing", file=sys.stderr)
            continue
        unit = points[0]["label"].split("|")[2]
        cells = "".join(
            f" {entry['size']:,.0f} {unit} | {time_text(entry['seconds'])} | {entry['megabytes']:.0f} MB |" for entry in points
        )
        slope = exponent(points)
        most = MOST_EXPONENT_OF_AN_ADVANCE if operation.startswith("Advance") else MOST_EXPONENT
        lines.append(f"| {operation} |{cells} {slope:.2f} | {'yes' if slope <= most else 'no'} |")
    return lines


def said_by(*command):
    return subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=False).stdout.strip()


def machine():
    """Processor, cores, steps that it has, memory and system in one line."""
    about = open("/proc/cpuinfo", encoding="utf-8").read()
    field = lambda name: next((line.split(":", 1)[1].strip() for line in about.splitlines() if line.startswith(name)), "")
    flags = field("flags").split()
    steps = "AVX-512" if "avx512vl" in flags else "AVX2" if "avx2" in flags else "SSE2"
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    return f"{field('model name')}, {os.cpu_count()} cores, {steps}, {memory:.0f} GiB, Linux {platform.release()}"


def commit():
    changed = said_by("git", "status", "--porcelain", "--untracked-files=no", "--", ".", ":!bench/RESULTS.md", ":!README.md")
    return said_by("git", "rev-parse", "--short=12", "HEAD") + (" with changes" if changed else "")


def show_in_readme(entries):
    lines = ["| What | Takes | Beside |", "|---|---|---|"]
    for start in FELT:
        for entry in entries:
            _, operation, peer = entry["label"].split("|")
            if operation.startswith(start):
                lines.append(f"| {operation} | {time_text(entry['ours'])} | {time_text(entry['theirs'])}: {peer} |")
    text = README.read_text(encoding="utf-8")
    before, rest = text.split(FELT_BEGIN)
    after = rest.split(FELT_END)[1]
    README.write_text(before + FELT_BEGIN + "\n".join(lines) + "\n" + FELT_END + after, encoding="utf-8")


class Display:
    """A virtual display and a session bus of their own, so that nothing on the desk takes part."""

    def __enter__(self):
        read, write = os.pipe()
        command = ["Xvfb", "-displayfd", str(write), "-screen", "0", "1600x1200x24", "-nolisten", "tcp", "-noreset"]
        self.server = subprocess.Popen(command, pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        number = os.read(read, 16).decode().strip()
        os.close(read)
        self.folder = tempfile.TemporaryDirectory()
        bus = subprocess.run(
            ["dbus-daemon", "--session", "--fork", "--print-address=1", "--print-pid=1"],
            capture_output=True, text=True, check=True,
        ).stdout.split()
        self.bus_process = int(bus[1])
        return os.environ | {
            "DISPLAY": f":{number}",
            "DBUS_SESSION_BUS_ADDRESS": bus[0],
            "XDG_RUNTIME_DIR": self.folder.name,
            "SDL_AUDIODRIVER": "dummy",
            "LC_ALL": "C.UTF-8",
        }

    def __exit__(self, *_):
        os.kill(self.bus_process, 15)
        self.server.terminate()
        self.server.wait()
        self.folder.cleanup()


def main():
    load_before = float(os.environ.get("LOAD_BEFORE") or os.getloadavg()[0])
    with Display() as environment:
        missing = []
        compared = [entry for name, which in COMPARED
                    for entry in run(name, [f"--benchmark_filter={which}"], environment, missing)]
        grown = [entry for rows in ROWS for entry in run(GROWING, [str(rows)], environment, missing)]
    noise = sorted(entry["noise"] for entry in compared)
    middle = noise[len(noise) // 2] if noise else math.nan
    text = [
        "# Results",
        "",
        "Made by `./run-bench`, which writes this page anew.",
        "",
        f"- Commit: {commit()}",
        f"- Machine: {machine()}",
        f"- Load when the run began: {load_before:.1f}; noise of the rows: {middle:.0f} % in the middle, "
        f"{noise[-1] if noise else math.nan:.0f} % at worst"
        + (". The machine wasn't quiet: take the ratios with care." if load_before > 0.5 or middle > 5 else "."),
        *(f"- Not measured: {what}" for what in missing),
        "",
        "Ours and theirs ran in turns, at least nine times each (three times for the walks through 14,400 rows), after one",
        "round that isn't counted. Times are medians, ratios those of the medians: ours by theirs, or theirs by ours where",
        "the goal is to be so many times as fast.",
        "The noise is half the distance between the quartiles of the rounds' own ratios.",
        "",
        *compared_table(compared),
        "",
        "## Long work",
        "",
        "Time and memory in use as sheet, strokes and cells grow. The exponent is that of the time over the size: 0 is",
        f"no growth, 1 is linear. Met: at most {MOST_EXPONENT}, a row advance at most {MOST_EXPONENT_OF_AN_ADVANCE}.",
        "",
        *growth_table(grown),
        "",
    ]
    RESULTS.write_text("\n".join(text), encoding="utf-8")
    show_in_readme(compared)
    print("\n".join(text))


if __name__ == "__main__":
    main()
