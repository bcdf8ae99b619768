#!/usr/bin/env python3
"""Turns the results of scripts/bench.sh into one table, prints it and writes it into the document.

bench_table.py RESULTS DOCUMENT reads RESULTS/linux.json (Google Benchmark), RESULTS/wine-*.json (the
Windows timing probe, one file a group of cases), RESULTS/gzip.json and RESULTS/idle.json, and replaces what stands between the
markers "<!-- bench:begin -->" and "<!-- bench:end -->" of DOCUMENT with the machine, the date and
the table. A measure whose cases are missing says so instead of a number.
"""
import datetime
import json
import platform
import re
import statistics
import subprocess
import sys
from pathlib import Path

BEGIN, END = "<!-- bench:begin -->", "<!-- bench:end -->"
MIB = 1024 * 1024


def load(path: Path) -> dict:
    try:
        return json.loads(path.read_text())
    except (OSError, ValueError):
        return {}


def entries(paths: list) -> list:
    """The benchmark entries of the files; of a file that a crash cut short, its whole lines."""
    found = []
    for path in paths:
        document = load(path)
        if document:
            found += document.get("benchmarks", [])
            continue
        for line in path.read_text(errors="replace").splitlines() if path.exists() else []:
            try:
                found.append(json.loads(line.strip().rstrip(",")))
            except ValueError:
                pass
    return [entry for entry in found if isinstance(entry, dict) and "name" in entry]


def cases(paths: list) -> dict:
    """Case name -> result; of Google Benchmark's repetitions the median is taken."""
    result = {}
    for entry in entries(paths):
        if entry.get("run_type") == "aggregate" and entry.get("aggregate_name") != "median":
            continue
        name = re.sub(r"(/real_time)?(_median)?$", "", entry.get("run_name", entry["name"]))
        result[name] = entry
    return result


def micros(entry: dict) -> float:
    scale = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}[entry.get("time_unit", "us")]
    return entry["real_time"] * scale


def ms(value: float) -> str:
    return f"{value / 1000:.3f} ms" if value < 1000 else f"{value / 1000:.2f} ms"


def ratio(results: dict, numerator: str, denominators: list, what: str = "") -> str:
    """The ratio, the measured figure and, beside it, the measured floor or peer it is held to."""
    if numerator not in results or any(d not in results for d in denominators):
        return "not measured"
    below = sum(micros(results[d]) for d in denominators)
    return (f"{micros(results[numerator]) / below:.2f}× ({ms(micros(results[numerator]))}; "
            f"{what or ' + '.join(d.rsplit('/', 1)[1] for d in denominators)} {ms(below)})")


def packing(results: dict, gzip: dict, case: str, files: str) -> str:
    if case not in results or files not in gzip:
        return "not measured"
    entry, facts = results[case], gzip[files]
    speed = facts["input_bytes"] / (micros(entry) / 1e6) / MIB
    gzip_speed = facts["input_bytes"] / facts["gzip_seconds"] / MIB
    size = entry.get("zip_bytes", 0)
    return (f"{speed:.1f} MiB/s (gzip -9 {gzip_speed:.1f}); {size / MIB:.2f} MiB "
            f"= {size / facts['gzip_bytes']:.2f}× gzip -9")


def report(results: dict) -> str:
    sections = {n: e for n, e in results.items() if n.startswith("report/section/")}
    if "report/all" not in results or not sections:
        return "not measured"
    slowest_name, slowest = max(sections.items(), key=lambda item: micros(item[1]))
    over = (micros(results["report/all"]) - micros(slowest)) / 1000
    return (f"{micros(results['report/all']) / 1000:.0f} ms, slowest section "
            f"{slowest_name.rsplit('/', 1)[1]} {micros(slowest) / 1000:.0f} ms: {over:+.0f} ms")


def usage_of(states: dict, state: str) -> dict:
    facts = states.get(state, {})
    usage = facts.get("usage", facts) if isinstance(facts, dict) else {}
    return usage if "cpu_percent" in usage else {}


def missing(states: dict, state: str) -> str:
    facts = states.get(state, {})
    usage = facts.get("usage", facts) if isinstance(facts, dict) else {}
    return "not measured: " + (usage.get("missing") or facts.get("missing") or "no result")


def idle_cost(usage: dict, baseline: dict) -> float:
    """A program's own share of a core and the wineserver's work above the prefix's baseline."""
    return usage["cpu_percent"] + max(0.0, usage["wineserver_cpu_percent"] -
                                      baseline["wineserver_cpu_percent"])


def baseline_of(states: dict) -> dict:
    """The prefix's idle wineserver, sampled before the programs and after them: the mean of the
    two, or the one that was measured."""
    samples = [usage for usage in (usage_of(states, name) for name in ("baseline", "baseline_end"))
               if usage]
    if not samples:
        return {}
    return dict(samples[0], wineserver_cpu_percent=sum(
        sample["wineserver_cpu_percent"] for sample in samples) / len(samples))


def idle_cell(states: dict, state: str) -> str:
    """The idle cost of the panel in one state against Notepad's, both above the same baseline."""
    usage, notepad = usage_of(states, state), usage_of(states, "notepad")
    baseline = baseline_of(states)
    if not usage or not baseline or not notepad:
        return missing(states, state if not usage else "baseline" if not baseline else "notepad")
    own, peer = idle_cost(usage, baseline), idle_cost(notepad, baseline)
    # /proc counts CPU time in clock ticks of 10 ms: less than one tick over the sample reads 0.
    tick = 1.0 / usage["seconds"]
    if peer >= tick:
        shown = f"{own / peer:.2f}×"
    elif own < tick:
        shown = f"both below one clock tick of the sample ({tick:.3f} %): no difference measured"
    else:
        shown = f"no ratio: Notepad below one clock tick ({tick:.3f} %), the panel above it"
    return (f"{shown} ({own:.3f} % = {usage['cpu_percent']:.3f} % + wineserver "
            f"{usage['wineserver_cpu_percent'] - baseline['wineserver_cpu_percent']:+.3f} %; "
            f"Notepad {peer:.3f} %; baseline wineserver {baseline['wineserver_cpu_percent']:.3f} %; "
            f"{usage['seconds']} s)")


def memory_cell(states: dict) -> str:
    tray, notepad = usage_of(states, "tray"), usage_of(states, "notepad")
    if not tray or not notepad:
        return missing(states, "tray" if not tray else "notepad")
    return (f"{tray['peak_rss_kib'] / notepad['peak_rss_kib']:.2f}× "
            f"({tray['peak_rss_kib'] / 1024:.1f} MiB; Notepad {notepad['peak_rss_kib'] / 1024:.1f} MiB)")


def start_cell(states: dict, key: str, target_ms: float) -> str:
    starts = states.get("start", {}).get("starts", {}).get(key, [])
    times = [time for time in starts if time is not None]
    if not times:
        return missing(states, "start")
    median = round(statistics.median(times))
    against = f"{median / target_ms:.2f}× of {target_ms:.0f} ms; " if target_ms else ""
    lost = len(starts) - len(times)
    no_window = f"; {lost} without a window within 60 s" if lost else ""
    return (f"{median} ms ({against}median of {len(times)}, {min(times)}–{max(times)} ms"
            f"{no_window})")


def idle(facts) -> dict:
    """The measured states by name: "baseline", "tray", "window", "notepad", "baseline_end",
    "tray_loopback", "window_loopback", "start"."""
    states = facts if isinstance(facts, list) else [dict(facts, state="tray")]
    return {state.get("state", "tray"): state for state in states if isinstance(state, dict)}


def crashed(folder: Path, group: str, cell: str) -> str:
    """A Wine cell without a number says so when its group's run crashed."""
    errors = folder / f"wine-{group}.err"
    if cell == "not measured" and errors.exists() and "Unhandled" in errors.read_text(errors="replace"):
        return f"crashed under Wine (build/bench/{errors.name})"
    return cell


def table(folder: Path) -> list:
    linux = cases([folder / "linux.json"])
    wine = cases(sorted(folder.glob("wine-*.json")))
    gzip = load(folder / "gzip.json")
    states = idle(load(folder / "idle.json"))
    rows = [
        ("1", "warm status refresh ÷ its floor (Windows: one OpenProcess + GetProcessTimes; "
         "POSIX: one read of /proc/<pid>/stat)", "≤ 1.5×",
         ratio(linux, "refresh/warm", ["refresh/floor"]),
         ratio(wine, "refresh/warm", ["refresh/floor"])),
        ("1", "warm status refresh ÷ one process snapshot", "≤ 0.1×",
         ratio(linux, "refresh/warm", ["refresh/snapshot"]),
         ratio(wine, "refresh/warm", ["refresh/snapshot"])),
        ("1", "cold status refresh ÷ (snapshot + TCP table read)", "—",
         ratio(linux, "refresh/cold", ["refresh/snapshot", "refresh/tcp_table"]),
         ratio(wine, "refresh/cold", ["refresh/snapshot", "refresh/tcp_table"])),
        ("2", "ZipArchive::pack, one 10 MiB log", "—",
         packing(linux, gzip, "zip/big_log", "big_log"),
         packing(wine, gzip, "zip/big_log", "big_log")),
        ("2", "ZipArchive::pack, 200 small logs", "—",
         packing(linux, gzip, "zip/small_logs", "small_logs"),
         packing(wine, gzip, "zip/small_logs", "small_logs")),
        ("3", "infoReportText, all sections vs the slowest one", "≤ slowest + 100 ms",
         report(linux), report(wine)),
        ("4", "idle in the tray (--silent), server listening on all interfaces: program + "
         "wineserver above the baseline ÷ Notepad's", "≤ 1.0× Notepad", "—",
         idle_cell(states, "tray")),
        ("4", "idle with the window open, server listening on all interfaces, the same ÷ Notepad's",
         "≤ 1.0× Notepad", "—", idle_cell(states, "window")),
        ("4", "idle in the tray (--silent), server listening on 127.0.0.1 alone, the same",
         "≤ 1.0× Notepad", "—", idle_cell(states, "tray_loopback")),
        ("4", "idle with the window open, server listening on 127.0.0.1 alone, the same",
         "≤ 1.0× Notepad", "—", idle_cell(states, "window_loopback")),
        ("4", "peak resident memory in the tray ÷ Notepad's", "—", "—", memory_cell(states)),
        ("5", "start of CVHControlPanel.exe to its visible window, server running, warm Wine",
         "≤ 300 ms (median of 10)", "—", start_cell(states, "server_running_ms", 300)),
        ("5", "start to visible window, the panel starting the server", "—", "—",
         start_cell(states, "server_starting_ms", 0)),
        ("5", "start of Wine's Notepad to its visible window, the same way", "—", "—",
         start_cell(states, "notepad_ms", 0)),
    ]
    groups = {"1": "refresh", "2": "zip", "3": "report"}
    rows = [row[:4] + (crashed(folder, groups[row[0]], row[4]) if row[0] in groups else row[4],)
            for row in rows]
    lines = ["| # | measure | target | linux-release | Wine |", "|---|---|---|---|---|"]
    lines += [f"| {' | '.join(row)} |" for row in rows]
    return lines


def command_output(command: list) -> str:
    try:
        return subprocess.run(command, capture_output=True, text=True).stdout.strip()
    except OSError:
        return "unknown"


def machine() -> list:
    model = "unknown"
    for line in Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            model = line.split(":", 1)[1].strip()
            break
    memory = Path("/proc/meminfo").read_text().split()[1]
    return [f"- Date: {datetime.date.today().isoformat()}",
            f"- Machine: {model}, {command_output(['nproc'])} cores, "
            f"{int(memory) // (1024 * 1024)} GiB, {platform.system()} {platform.release()}",
            f"- Wine: {command_output(['/usr/lib/wine/wine64', '--version']) or 'not installed'}; "
            f"compiler: {command_output(['g++', '-dumpfullversion'])} (g++), mingw-w64 for Wine"]


def main() -> None:
    folder, document = Path(sys.argv[1]), Path(sys.argv[2])
    lines = table(folder)
    print("\n".join(lines))
    text = document.read_text() if document.exists() else f"{BEGIN}\n{END}\n"
    block = "\n".join([BEGIN, *machine(), "", *lines, END])
    start, end = text.index(BEGIN), text.index(END) + len(END)
    document.write_text(text[:start] + block + text[end:])


if __name__ == "__main__":
    main()
