"""Measures the renderer beside SoX and FFmpeg on one file; report.py prints the table."""

import concurrent.futures
import json
import os
import re
import statistics
import subprocess
import tempfile
import time

import callgrind

RATE = 44100
SECONDS = {"quick": 30, "full": 180}  # of music
TURNS = {"quick": 3, "full": 5}

# The settings of bench/Load.h with 6 dB of gain, for all three programs.
CUTOFFS = [120, 1000, 6000]
BAND = {"Comp Threshold": -30, "Ratio": 4, "Attack": 10, "Release": 100, "Gain": 6}
SETTINGS = [f"Crossover {name} Cutoff={hz}" for name, hz in zip(("Low", "Mid", "High"), CUTOFFS)]
SETTINGS += [f"Band {band} {name}={value}" for band in (1, 2, 3, 4) for name, value in BAND.items()]
SOX_BAND = "0.01,0.1 6:-70,-70,-30,-30,0,-22.5 6"
SOX = ["mcompand", SOX_BAND, *(word for hz in CUTOFFS for word in (str(hz), SOX_BAND)), "compand", "0.005,0.1", "-70,-70,-6,-6,0,-6"]
FFMPEG = "mcompand=args='" + " | ".join(f"0.01,0.1 6 -70/-70,-30/-30,0/-22.5 {hz} 0 -90 6" for hz in (*CUTOFFS, 20000)) + "',alimiter=limit=0.5"
LOUDNORM = "loudnorm=I=-14:TP=-1"

RENDER, FIRST, LOUDNESS, LIMITED = "render", "render --loudness -23, first setting", "render --loudness -14", "render --loudness -10, brickwall"
SOX_ROW, LOUDNORM_ROW, TWO_PASSES = "SoX, mcompand, compand, gain -n", "FFmpeg, loudnorm", "FFmpeg, loudnorm in two passes"

# Upper limit of each figure. Counts repeat to a few per cent, ratios of times vary with the load.
FRAME_LIMITS = {RENDER: 900, FIRST: 1500, LOUDNESS: 3200, LIMITED: 8500}  # instructions
TIME_LIMITS = {(RENDER, SOX_ROW): 0.5, (FIRST, LOUDNORM_ROW): 0.3, (LOUDNESS, LOUDNORM_ROW): 0.6}


def ffmpeg(source, filters, target=None):
    output = ["-ar", str(RATE), "-c:a", "pcm_s16le", "-y", target] if target else ["-f", "null", "-"]
    return ["ffmpeg", "-nostdin", "-hide_banner", "-loglevel", "info" if "json" in filters else "error", "-i", source, "-af", filters, *output]


def second_pass(first):
    """loudnorm with the figures that its first pass measured."""
    done = subprocess.run(first, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=True)
    found = json.loads(re.search(r"\{[^{}]*\}\s*$", done.stderr)[0])
    names = {"I": "input_i", "TP": "input_tp", "LRA": "input_lra", "thresh": "input_thresh"}
    return LOUDNORM + "".join(f":measured_{name}={found[key]}" for name, key in names.items()) + f":offset={found['target_offset']}:linear=true"


def rows(folder, source, target):
    """Commands of each row, run one after the other."""
    def render(*options):
        settings = [word for setting in SETTINGS for word in ("--set", setting)]
        return [[os.path.join(folder, "tessarine"), "render", source, target, *settings, *options]]

    def loudness(level):
        return render("--loudness", level, "--true-peak", "-1")

    analysis = ffmpeg(source, LOUDNORM + ":print_format=json")
    return {
        RENDER: render("--set", "Limiter Threshold=-6", "--set", "Limiter Margin=-3"),
        SOX_ROW: [["sox", "-V1", source, target, *SOX, "gain", "-n", "-1"]],
        "FFmpeg, mcompand, alimiter": [ffmpeg(source, FFMPEG, target)],
        "FFmpeg, ebur128 with true peak, no output": [ffmpeg(source, "ebur128=peak=true")],
        FIRST: loudness("-23"),
        LOUDNESS: loudness("-14"),
        LIMITED: loudness("-10"),
        LOUDNORM_ROW: [ffmpeg(source, LOUDNORM, target)],
        TWO_PASSES: [analysis, ffmpeg(source, second_pass(analysis), target)],
    }


def times(commands):
    """Processor time and wall time in seconds."""
    wall, before = time.monotonic(), os.times()
    for command in commands: callgrind.run(command)
    after = os.times()
    used = after.children_user + after.children_system - before.children_user - before.children_system
    return used, time.monotonic() - wall


def instructions(commands):
    total = 0
    for command in commands:
        tool = ["valgrind", "--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null"]
        done = subprocess.run(tool + command, stdin=subprocess.DEVNULL, capture_output=True, text=True)
        found = re.findall(r"I\s+refs:\s+([\d,]+)", done.stderr)
        if done.returncode != 0 or not found: raise SystemExit(f"bench: {' '.join(command)} failed:\n{done.stderr[-2000:]}")
        total += int(found[0].replace(",", ""))
    return total


def report(folder, quick, table, verdicts):
    kind = "quick" if quick else "full"
    with tempfile.TemporaryDirectory() as scratch:
        music = os.path.join(scratch, "music.wav")
        callgrind.run([os.path.join(folder, "tessarine_music"), music, str(SECONDS[kind])])
        target = os.path.join(scratch, "out.wav")
        work = rows(folder, music, target)
        measured = {name: [] for name in work}
        for _ in range(TURNS[kind]):
            for name, commands in work.items(): measured[name].append(times(commands))
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:  # each command with an output of its own
            counting = {name: pool.submit(instructions, [[word.replace(target, f"{scratch}/{i}.wav") for word in command] for command in commands])
                        for i, (name, commands) in enumerate(work.items()) if commands[0][0] != "ffmpeg"}  # Valgrind cannot run it
            counts = {name: promise.result() for name, promise in counting.items()}

    table.title(f"Renderer, {SECONDS[kind]} s of music, stereo, 16 bit", "CPU s", "wall s", "M instr.", "per frame")
    used = {}
    for name in work:
        used[name], wall = (statistics.median(column) for column in zip(*measured[name]))
        per_frame = counts.get(name, 0) / (SECONDS[kind] * RATE)
        counted = [f"{counts[name] / 1e6:.0f}", f"{per_frame:.0f}"] if name in counts else ["-", "-"]
        table.row(name, f"{used[name]:.2f}", f"{wall:.2f}", *counted)
        if name in FRAME_LIMITS: verdicts.verdict(f"{name}: instructions per frame", per_frame, FRAME_LIMITS[name])
    for (name, other), limit in TIME_LIMITS.items():
        verdicts.verdict(f"{name}: time against {other}", used[name] / used[other], limit)
