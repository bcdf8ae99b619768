#!/usr/bin/env python3
"""Makes the input files of the packing benchmarks and measures gzip -9 on them.

bench_data.py FOLDER writes FOLDER/big/error.log (10 MiB) and FOLDER/small/log_NNN.log (200 files of
1 to 32 KiB), nginx-like log lines from a fixed seed, so every run packs the same bytes. It prints one
JSON object: for "big_log" and "small_logs", the input bytes, the bytes of gzip -9 (each file
compressed alone, as a ZIP entry is) and gzip's median wall time of three runs in seconds.
"""
import json
import random
import subprocess
import sys
import time
from pathlib import Path

BIG_SIZE = 10 * 1024 * 1024
SMALL_COUNT = 200

LEVELS = ["debug", "info", "notice", "warn", "error", "crit"]
PATHS = ["/sign", "/status", "/api/v1/certificates", "/api/v1/sign/batch", "/favicon.ico"]
AGENTS = ["Mozilla/5.0 (Windows NT 10.0; Win64; x64) Chrome/124.0", "Mozilla/5.0 Firefox/125.0"]


def log_line(rng: random.Random, second: int) -> str:
    stamp = time.strftime("%Y/%m/%d %H:%M:%S", time.gmtime(1_700_000_000 + second))
    if rng.random() < 0.5:
        level = rng.choice(LEVELS)
        return (f"{stamp} [{level}] {rng.randint(1000, 9999)}#{rng.randint(1000, 9999)}: "
                f"*{rng.randint(1, 10**6)} client {rng.randint(1, 254)}.{rng.randint(0, 255)}.0.1 "
                f"closed keepalive connection, upstream time {rng.random():.3f}\n")
    return (f"127.0.0.1 - - [{stamp}] \"POST {rng.choice(PATHS)} HTTP/1.1\" "
            f"{rng.choice([200, 200, 200, 204, 400, 500])} {rng.randint(0, 65535)} \"-\" "
            f"\"{rng.choice(AGENTS)}\" {rng.random():.4f}\n")


def write_log(path: Path, size: int, rng: random.Random) -> None:
    lines, total, second = [], 0, rng.randint(0, 10**6)
    while total < size:
        line = log_line(rng, second)
        second += rng.randint(0, 3)
        lines.append(line)
        total += len(line)
    path.write_bytes("".join(lines).encode()[:size])


def gzip_facts(files: list) -> dict:
    times, compressed = [], 0
    for _ in range(3):
        start, compressed = time.perf_counter(), 0
        for file in files:
            result = subprocess.run(["gzip", "-9", "-c", str(file)], capture_output=True, check=True)
            compressed += len(result.stdout)
        times.append(time.perf_counter() - start)
    return {"input_bytes": sum(f.stat().st_size for f in files), "gzip_bytes": compressed,
            "gzip_seconds": sorted(times)[1]}


def main() -> None:
    folder = Path(sys.argv[1])
    rng = random.Random(20240501)
    (folder / "big").mkdir(parents=True, exist_ok=True)
    (folder / "small").mkdir(parents=True, exist_ok=True)
    big = folder / "big" / "error.log"
    write_log(big, BIG_SIZE, rng)
    small = []
    for index in range(SMALL_COUNT):
        path = folder / "small" / f"log_{index:03}.log"
        write_log(path, rng.randint(1024, 32 * 1024), rng)
        small.append(path)
    print(json.dumps({"big_log": gzip_facts([big]), "small_logs": gzip_facts(small)}))


if __name__ == "__main__":
    main()
