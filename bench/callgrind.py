"""Runs Callgrind and reads the instruction counts of each stage."""

import collections
import os
import re
import subprocess
import tempfile
import threading

# The source files of each stage. Functions of other files (vector passes, locks, the C library) count towards the
# stages that call them.
STAGES = {
    "crossover": r"dsp/(stages/(CrossOver|FilterBank)|numerics/FilterDesign|kernels/CrossOver\w*)",
    "compressor": r"dsp/(stages/Dynamics|kernels/Dynamics\w*)",
    "spectra": r"dsp/(meter/(Spectrum|PublishedSpectrum)|kernels/(Spectrum|Fft)\w*)",
    "limiter": r"dsp/(stages/(Maximizer|SlidingMinimum)|kernels/Maximizer\w*)",
    "gain, level meter": r"dsp/(stages/Gain|meter/Level)",
    "chain: guards, sum, order": r"dsp/(chain|component|automation|stages/Global)/?\w*",
    "host shell, plug-in": r"(host|plugin|apps/tessarine/effect|bench)/[^/.]+",
}
OTHER = "other"


def command(program, out_file, *options):
    return ["valgrind", "--tool=callgrind", "--instr-atstart=no", "--collect-atstart=no", "--callgrind-out-file=" + out_file, *options, *program]


def run(arguments, environment=None):
    done = subprocess.run(arguments, env={**os.environ, **(environment or {})}, capture_output=True, text=True)
    if done.returncode != 0:
        raise SystemExit(f"bench: {' '.join(arguments)} failed:\n{done.stderr[-2000:]}")
    return done.stdout


def stage_of_file(file):
    return next((s for s, pattern in STAGES.items() if re.search(rf"(^|/){pattern}(\.kernel)?\.(cpp|h)$", file)), None)


class Profile:
    """Instruction counts of one run: total and by stage."""

    def __init__(self, program, environment):
        with tempfile.TemporaryDirectory() as folder:
            out_file = os.path.join(folder, "out")
            run(command(program, out_file), environment)
            self._read(out_file)

    def _read(self, out_file):
        names = {"file": {}, "function": {}}
        self.own = collections.Counter()
        self.calls = collections.defaultdict(collections.Counter)  # callee -> caller -> instructions
        self.files = collections.defaultdict(set)

        def name(kind, text):
            number, _, new = text.partition(" ")
            if new:
                names[kind][number] = new
            return number

        file = function = callee = None
        call = False
        with open(out_file) as lines:
            for line in lines:
                key, _, value = line.rstrip("\n").partition("=")
                if key in ("fl", "fi", "fe"):
                    file = name("file", value)
                elif key == "fn":
                    function = name("function", value)
                elif key in ("cfi", "cfl"):
                    name("file", value)
                elif key == "cfn":
                    callee = name("function", value)
                elif key == "calls":
                    call = True
                elif re.match(r"[0-9+*-]", line):
                    cost = int((line.split() + ["0"])[1])
                    if call:
                        self.calls[callee][function] += cost
                    else:
                        self.own[function] += cost
                        self.files[function].add(file)
                    call = False
        self.files = {f: {names["file"][n] for n in numbers} for f, numbers in self.files.items()}
        self.total = sum(self.own.values())

    def stages(self):
        """Instructions of each stage."""
        shares = {}

        def of(function, path=()):
            if function in shares:
                return shares[function]
            files = sorted(self.files.get(function, ()), key=lambda file: file.endswith(".h"))  # inlined code last
            own = next(filter(None, map(stage_of_file, files)), None)
            share = collections.Counter()
            if own:
                share[own] = 1.0
            else:
                callers = {c: n for c, n in self.calls[function].items() if c not in path and c != function and n}
                whole = sum(callers.values())
                for caller, n in callers.items():
                    for stage, part in of(caller, path + (function,)).items():
                        share[stage] += part * n / whole
                if not callers:
                    share[OTHER] = 1.0
            shares[function] = share
            return share

        sums = collections.Counter()
        for function, own in self.own.items():
            for stage, part in of(function).items():
                sums[stage] += own * part
        return sums


def parts(program, environment):
    """Instructions of each part of a run; the program ends its parts with Counting::endPart."""
    # Callgrind writes tens of thousands of whole profiles. A pipe avoids storing them: only the totals are kept.
    with tempfile.TemporaryDirectory() as folder:
        pipe = os.path.join(folder, "out")
        os.mkfifo(pipe)
        keep_open = os.open(pipe, os.O_RDWR)  # Callgrind closes it after each part
        totals = []

        def read():
            with open(pipe, "rb") as lines:
                for line in lines:
                    if line.startswith(b"totals:"):
                        totals.append(int(line[7:]))

        reader = threading.Thread(target=read)
        reader.start()
        try:
            run(command(program, pipe, "--combine-dumps=yes", "--dump-line=no"), environment)
        finally:
            os.close(keep_open)
            reader.join()
    return totals[:-1]  # without the code after the last part
