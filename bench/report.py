#!/usr/bin/env python3
"""Measures the effect and its peer and prints the tables; script/bench calls it with the folder of the programs."""

import argparse
import concurrent.futures
import os
import re
import statistics
import sys

sys.dont_write_bytecode = True
import callgrind
import renderer

BLOCKS = [64, 256, 512, 4096]  # frames
PIECE = 65536  # frames per count
MINUTE = 41 * PIECE
MODES = {"soft": [], "brickwall": ["--brickwall"]}

# Upper limit of each figure.
LIMITS = {
    "instructions per frame": {
        ("sse2", "soft"): 900, ("sse2", "brickwall"): 1050, ("avx2", "soft"): 550, ("avx2", "brickwall"): 650,
    },
    "time against the peer": {"sse2": 0.25, "avx2": 0.15},
    "block 64 against 4096": 1.2,
    "worst block against the median": 4.0,
    "a cutoff moved before every block": {512: 1.5, 64: 2.5},
    "silence against music": {"instructions": 1.0, "time": 1.05},  # times vary, counts do not
}


class Bench:
    def __init__(self, folder, quick):
        self.folder, self.quick = folder, quick
        self.paths = [p for p in ("avx2", "sse2", "portable") if self.output("tessarine_count", p, "--kernels") == p]
        self.workers = concurrent.futures.ThreadPoolExecutor(os.cpu_count())

    def program(self, name, *options):
        return [os.path.join(self.folder, name), *map(str, options)]

    def output(self, name, path, *options):
        return callgrind.run(self.program(name, *options), {"TESSARINE_ISA": path}).strip()

    def count(self, path, *options):
        """A future of the profile of one piece."""
        program = self.program("tessarine_count", "--frames", PIECE, *options)
        return self.workers.submit(callgrind.Profile, program, {"TESSARINE_ISA": path})

    def count_parts(self, path, *options):
        frames = MINUTE // 10 // PIECE * PIECE if self.quick else MINUTE
        program = self.program("tessarine_count", "--block", 64, "--each-block", "--frames", frames, *options)
        return self.workers.submit(callgrind.parts, program, {"TESSARINE_ISA": path})

    def count_peer(self, block):
        program = self.program("tessarine_peer", "--count", "--blocks", block)
        return self.workers.submit(callgrind.Profile, program, {})

    def time_with_peer(self, path, mode):
        """ns per frame by block size: (this effect, peer), measured alternately."""
        turns = 5 if self.quick else 9
        lines = self.output("tessarine_peer", path, "--turns", turns, *MODES[mode]).splitlines()
        return {int(block): (float(ours), float(peer)) for block, ours, peer in map(str.split, lines)}

    def time_silence(self, path):
        """ns per frame of music and of the silence after it, measured alternately."""
        times = {"": [], "--silence": []}
        for _ in range(3 if self.quick else 9):
            for option in times:
                text = self.output("tessarine_count", path, "--frames", 10 * PIECE, *option.split())
                times[option] += map(float, re.findall(r"(.*) ns per frame", text))
        return [statistics.median(values) for values in times.values()]


class Table:
    def __init__(self):
        self.lines = []

    def title(self, text, *columns):
        self.lines += ["", f"{text:46}" + "".join(f"{c:>12}" for c in columns)]

    def row(self, text, *cells):
        self.lines.append(f"  {text:44}" + "".join(f"{c:>12}" for c in cells))

    def verdict(self, text, value, limit):
        self.lines.append(f"  {'PASS' if value <= limit else 'FAIL'}  {text:64} {value:9.4g}  at most {limit:g}")


def per_frame(profile):
    return profile.total / PIECE


def measure_counts(bench):
    """All counts run in parallel: other load on the machine does not affect them."""
    promises = {"peer": {b: bench.count_peer(b) for b in BLOCKS}}
    fast = [p for p in bench.paths if p != "portable"]
    promises["worst"] = {(p, m): bench.count_parts(p, *MODES[m]) for p in fast for m in MODES}
    promises["whole"] = {(p, m, b): bench.count(p, "--block", b, *MODES[m]) for p in bench.paths for m in MODES for b in BLOCKS}
    promises["cutoffs"] = {(p, b): bench.count(p, "--block", b, "--cutoffs") for p in fast for b in (512, 64)}
    promises["silence"] = {p: bench.count(p, "--silence") for p in fast}
    return {name: {key: p.result() for key, p in group.items()} for name, group in promises.items()}


def report_counts(bench, counts, table, verdicts):
    blocks = [f"block {b}" for b in BLOCKS]
    table.title("Instructions per stereo frame", *blocks, "64 / 4096")
    for path in bench.paths:
        for mode in MODES:
            values = [per_frame(counts["whole"][path, mode, b]) for b in BLOCKS]
            table.row(f"{path}, {mode}", *(f"{v:.0f}" for v in values), f"{values[0] / values[-1]:.2f}")
            if (path, mode) in LIMITS["instructions per frame"]:
                verdicts.verdict(f"{path}, {mode}: instructions per frame, block 512", values[2],
                                 LIMITS["instructions per frame"][path, mode])
                verdicts.verdict(f"{path}, {mode}: instructions of block 64 against 4096", values[0] / values[-1],
                                 LIMITS["block 64 against 4096"])
    table.row("peer", *(f"{per_frame(counts['peer'][b]):.0f}" for b in BLOCKS),
              f"{per_frame(counts['peer'][64]) / per_frame(counts['peer'][4096]):.2f}")


def report_stages(bench, counts, table):
    columns = [(p, m) for p in bench.paths if p != "portable" for m in MODES]
    table.title("Instructions by stage, block 512", *(f"{p} {m}"[:11] for p, m in columns))
    profiles = {c: counts["whole"][(*c, 512)] for c in columns}
    for stage in [*callgrind.STAGES, callgrind.OTHER]:
        values = [profiles[c].stages()[stage] / PIECE for c in columns]
        if max(values) < 0.5: continue
        table.row(stage, *(f"{v:.1f} {100 * v / per_frame(profiles[c]):3.0f}%" for v, c in zip(values, columns)))


def report_special_cases(counts, table, verdicts):
    table.title("Instructions of a block of 64 over " + ("a minute" if counts["minute"] else "six seconds"), "median", "worst", "ratio")
    for (path, mode), blocks in counts["worst"].items():
        median, worst = statistics.median(blocks), max(blocks)
        table.row(f"{path}, {mode}", f"{median:.0f}", worst, f"{worst / median:.2f}")
        verdicts.verdict(f"{path}, {mode}: worst block of 64 against the median", worst / median,
                         LIMITS["worst block against the median"])
    table.title("A cutoff moved before every block", "steady", "moved", "ratio")
    for (path, block), profile in counts["cutoffs"].items():
        steady, moved = per_frame(counts["whole"][path, "soft", block]), per_frame(profile)
        table.row(f"{path}, block {block}, instructions per frame", f"{steady:.0f}", f"{moved:.0f}", f"{moved / steady:.2f}")
        verdicts.verdict(f"{path}: a cutoff moved before every block of {block}", moved / steady,
                         LIMITS["a cutoff moved before every block"][block])


def report_silence(bench, counts, table, verdicts):
    table.title("Silence after music, denormals not flushed", "music", "silence", "ratio")
    for path, profile in counts["silence"].items():
        music, silence = per_frame(counts["whole"][path, "soft", 512]), per_frame(profile)
        table.row(f"{path}, instructions per frame", f"{music:.0f}", f"{silence:.0f}", f"{silence / music:.2f}")
        verdicts.verdict(f"{path}: silence after music, instructions", silence / music,
                         LIMITS["silence against music"]["instructions"])
        music, silence = bench.time_silence(path)
        table.row(f"{path}, ns per frame", f"{music:.1f}", f"{silence:.1f}", f"{silence / music:.2f}")
        verdicts.verdict(f"{path}: silence after music, time", silence / music, LIMITS["silence against music"]["time"])


def report_times(bench, table, verdicts):
    """Returns the ratio of times (this effect to peer) in soft mode at block 512 on the fastest path."""
    table.title("Time, ns per stereo frame", *(f"block {b}" for b in BLOCKS), "64 / 4096")
    ratios = {}
    for path in bench.paths:
        for mode in MODES:
            times = bench.time_with_peer(path, mode)
            ours, peer = zip(*(times[b] for b in BLOCKS))
            ratio = [o / p for o, p in zip(ours, peer)]
            ratios[path, mode] = ratio[BLOCKS.index(512)]
            table.row(f"{path}, {mode}", *(f"{t:.1f}" for t in ours), f"{ours[0] / ours[-1]:.2f}")
            table.row("  peer in the same run", *(f"{t:.1f}" for t in peer), f"{peer[0] / peer[-1]:.2f}")
            table.row("  ratio", *(f"{r:.3f}" for r in ratio))
            if path in LIMITS["time against the peer"]:
                verdicts.verdict(f"{path}, {mode}: time against the peer, block 512", ratios[path, mode],
                                 LIMITS["time against the peer"][path])
                verdicts.verdict(f"{path}, {mode}: time of block 64 against 4096", ours[0] / ours[-1],
                                 LIMITS["block 64 against 4096"])
    return ratios[bench.paths[0], "soft"]


def write_document(path, mark, text):
    with open(path) as file:
        page = file.read()
    page, found = re.subn(rf"(<!-- {mark} -->\n```\n).*?(```\n)", lambda m: m[1] + text + m[2], page, flags=re.S)
    if not found: raise SystemExit(f"bench: {path} has no code block after '<!-- {mark} -->'")
    with open(path, "w") as file:
        file.write(page)


def report_effect(folder, quick):
    bench, table, verdicts = Bench(folder, quick), Table(), Table()
    counts = measure_counts(bench)
    counts["minute"] = not quick
    report_counts(bench, counts, table, verdicts)
    report_stages(bench, counts, table)
    report_special_cases(counts, table, verdicts)
    report_silence(bench, counts, table, verdicts)
    ratio = report_times(bench, table, verdicts)

    peer = per_frame(counts["peer"][512]) / per_frame(counts["whole"][bench.paths[0], "soft", 512])
    headline = (f"On the {bench.paths[0]} path Tessarine takes {ratio:.2f} of the peer's time ({1 / ratio:.1f} times as fast) "
                f"and 1/{peer:.0f} of its instructions.")
    return text_of(table, verdicts) + f"\n{headline}\n"


def report_renderer(folder, quick):
    table, verdicts = Table(), Table()
    renderer.report(folder, quick, table, verdicts)
    return text_of(table, verdicts)


def text_of(table, verdicts):
    return "\n".join(table.lines[1:] + ["", "Limits"] + verdicts.lines) + "\n"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder")
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--renderer", action="store_true")
    parser.add_argument("--write", metavar="DOCUMENT")
    options = parser.parse_args()

    parts = {"renderer": report_renderer} if options.renderer else {"table": report_effect, "renderer": report_renderer}
    for mark, report in parts.items():
        text = report(options.folder, options.quick)
        print(text)
        if options.write: write_document(options.write, mark, text)


main()
