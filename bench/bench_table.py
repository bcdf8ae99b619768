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


def ratio(results: dict, numerator: str, denominators: list) -> str:
    if numerator not in results or any(d not in results for d in denominators):
        return "not measured"
    below = sum(micros(results[d]) for d in denominators)
    return f"{micros(results[numerator]) / below:.2f}× ({micros(results[numerator]) / 1000:.2f} ms)"


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


def idle_state(facts) -> tuple:
    """The CPU and peak-memory cells of one state of the idle program."""
    usage = facts.get("usage", facts) if isinstance(facts, dict) else {}
    if "cpu_percent" not in usage:
        why = usage.get("missing") or (facts.get("missing") if isinstance(facts, dict) else None)
        return ("not measured: " + (why or "no result"),) * 2
    return (f"{usage['cpu_percent']:.2f} % (wineserver {usage['wineserver_cpu_percent']:.2f} %) "
            f"over {usage['seconds']} s", f"{usage['peak_rss_kib'] / 1024:.1f} MiB")


def idle(facts) -> dict:
    """The idle program's cells by state ("tray", "window"); an older single result is the tray's."""
    states = facts if isinstance(facts, list) else [dict(facts, state="tray")]
    return {state.get("state", "tray"): idle_state(state) for state in states}


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
    idle_cells = idle(load(folder / "idle.json"))
    tray_cpu, tray_peak = idle_cells.get("tray", ("not measured",) * 2)
    window_cpu, window_peak = idle_cells.get("window", ("not measured",) * 2)
    rows = [
        ("1", "warm status refresh ÷ one process snapshot", "≤ 1.1×",
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
        ("4", "program idle in the tray (--silent), server running", "< 0.5 % of one core", "—",
         tray_cpu),
        ("4", "program idle with its window open, server running", "< 0.5 % of one core", "—",
         window_cpu),
        ("4", "program's peak resident memory (tray; window)", "—", "—",
         f"{tray_peak}; {window_peak}"),
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
