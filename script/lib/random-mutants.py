#!/usr/bin/env python3
"""random-mutants COUNT SEED: prints COUNT random mutants of the product's C++ code in the format of tests/mutants.txt,
the same for the same seed and code. Some do not compile or have no visible effect. Skips Windows code, which the
mutation test does not build."""
import random
import re
import subprocess
import sys

PRODUCT = ['PluginBase', 'apps', 'dsp', 'host', 'platform', 'plugin', 'ui']
LEFT_OUT = re.compile(r'win32|_win\b|_win\.|host/HostCalls|host/vst2\.h')
NO_CODE = re.compile(r'\s*(#|static_assert|template|using|namespace|case .*: return "|friend|extern)')
COMMENT_OR_STRING = re.compile(r'//[^\n]*|/\*.*?\*/|R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', re.S)

SWAPS = {' < ': ' <= ', ' <= ': ' < ', ' > ': ' >= ', ' >= ': ' > ', ' == ': ' != ', ' != ': ' == ', ' && ': ' || ',
         ' || ': ' && ', ' + ': ' - ', ' - ': ' + ', ' * ': ' / ', ' / ': ' * ', ' += ': ' -= ', ' -= ': ' += ',
         '++': '--', 'true': 'false', 'false': 'true', 'std::min(': 'std::max(', 'std::max(': 'std::min('}
SWAP = re.compile('|'.join(rf'\b{s}\b' if s.isalpha() else re.escape(s) for s in sorted(SWAPS, key=len, reverse=True)))
NUMBER = re.compile(r'(?<![\w.])(\d+\.\d+f?|\d+)(?![\w.])')
CONDITION = re.compile(r'\bif \(((?:[^()]|\((?:[^()]|\([^()]*\))*\))*)\)(?= |$)')
STATEMENT = re.compile(r'^\s+(?!return|const |auto |static |case |default|break|using )[\w:>.\-\[\]*()]+(?:\(.*\)| [-+*|&]?= .*);$')


def mutations(line, masked):
    """Yields (description, new line) for each mutant of a line. Comments and strings are blank in masked."""
    for m in SWAP.finditer(masked):
        new = SWAPS[m.group()]
        yield f"'{m.group().strip()}' becomes '{new.strip()}'", line[:m.start()] + new + line[m.end():]
    for m in NUMBER.finditer(masked):
        text = m.group()
        new = re.sub(r'[\d.]+', lambda n: repr(float(n.group()) * 2 or 1.0), text) if '.' in text else str(int(text) + 1)
        yield f'{text} becomes {new}', line[:m.start()] + new + line[m.end():]
    for m in CONDITION.finditer(masked):
        condition = line[m.start(1):m.end(1)]
        if ';' not in condition and ' = ' not in condition:
            yield 'the condition is negated', line[:m.start(1)] + f'!({condition})' + line[m.end(1):]
    if STATEMENT.match(masked):
        yield 'a statement is missing', re.match(r'\s*', line).group() + ';'


def sites():
    """Yields all mutants of all files: (file, line number, description, original lines, new lines)."""
    names = subprocess.run(['git', 'ls-files', '--', *PRODUCT], capture_output=True, text=True, check=True).stdout.split()
    for name in names:
        if not name.endswith(('.cpp', '.h')) or LEFT_OUT.search(name):
            continue
        with open(name, encoding='utf-8') as file:
            text = file.read()
        masked = COMMENT_OR_STRING.sub(lambda m: re.sub(r'[^\n]', ' ', m.group()), text)
        lines, masks = text.split('\n'), masked.split('\n')
        for i, line in enumerate(lines):
            if NO_CODE.match(line):
                continue
            for what, new in mutations(line, masks[i].rstrip()):
                first = i # adds lines above until the text is unique
                while first > 0 and text.count('\n'.join(lines[first:i + 1])) > 1:
                    first -= 1
                yield name, i + 1, what, lines[first:i + 1], lines[first:i] + [new]


def main():
    count, seed = int(sys.argv[1]), int(sys.argv[2])
    found = list(sites())
    for name, line, what, before, after in random.Random(seed).sample(found, min(count, len(found))):
        print(f'{name}: line {line}, {what}')
        print(*('-' + text for text in before), *('+' + text for text in after), sep='\n')
        print()


main()
