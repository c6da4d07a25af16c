#!/usr/bin/env bash
# Prints the size of the test code against the code it tests, in non-blank
# lines that are not only comment (C and C++ sources and headers, including
# configured `.in` headers). Unit and end-to-end tests are `tests/` without the
# benchmarks and fuzz targets; their shared fixtures (`tests/support/`) are
# counted with them and also shown apart. The code tested is `source/` and
# `tools/`. The figure is printed only; it gates nothing.
set -euo pipefail
cd "$(dirname "$0")/.."
exec python3 - <<'PY'
import os

SUFFIXES = ('.c', '.cc', '.cpp', '.h', '.hpp', '.in')

def code_lines(path):
    """Non-blank lines that hold something besides comments."""
    count, in_block = 0, False
    with open(path, encoding='utf-8', errors='replace') as f:
        for line in f:
            kept, i, quote = [], 0, None
            while i < len(line):
                c = line[i]
                if in_block:
                    if line.startswith('*/', i):
                        in_block, i = False, i + 2
                    else:
                        i += 1
                    continue
                if quote:
                    kept.append(c)
                    if c == '\\':
                        kept.append(line[i + 1:i + 2])
                        i += 2
                        continue
                    if c == quote:
                        quote = None
                    i += 1
                    continue
                if line.startswith('//', i):
                    break
                if line.startswith('/*', i):
                    in_block, i = True, i + 2
                    continue
                if c in '"\'':
                    quote = c
                kept.append(c)
                i += 1
            if ''.join(kept).strip():
                count += 1
    return count

def tree(root, skip=()):
    total = 0
    for directory, subdirs, files in os.walk(root):
        subdirs[:] = sorted(d for d in subdirs
                            if os.path.join(directory, d) not in skip)
        total += sum(code_lines(os.path.join(directory, f))
                     for f in files if f.endswith(SUFFIXES))
    return total

code = tree('source') + tree('tools')
tests = tree('tests', skip=('tests/bench', 'tests/fuzz'))
fixtures = tree('tests/support')
extra = tree('tests/bench') + tree('tests/fuzz')

print(f"code (source/, tools/):                      {code:6d}")
print(f"unit and end-to-end tests with fixtures:     {tests:6d}  ratio {tests / code:.2f}")
print(f"  of which shared fixtures (tests/support/): {fixtures:6d}  "
      f"ratio without them {(tests - fixtures) / code:.2f}")
print(f"benchmarks and fuzz targets:                 {extra:6d}  "
      f"ratio with them {(tests + extra) / code:.2f}")
PY
