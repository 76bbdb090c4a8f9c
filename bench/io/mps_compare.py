#!/usr/bin/env python3
"""Reads every model file under tests/data with two runzento builds and compares them.

usage: mps_compare.py REF_RUNZENTO NEW_RUNZENTO [DIR...]   (default: tests/data, tests/instances)

Each file is read with --no-solve in the automatic, free and fixed layouts and written back
as MPS; exit codes, logs (timings masked) and written files must match byte for byte. Small
files are also read at print level 300, whose trace shows every line's fields.
"""
import os, re, subprocess, sys, tempfile, filecmp

ref, new = sys.argv[1], sys.argv[2]
here = os.path.dirname(os.path.abspath(__file__))
dirs = sys.argv[3:] or [os.path.join(here, '../../tests/data'), os.path.join(here, '../../tests/instances')]
skip = ('.lp', '.md', '.csv', '.ltx')
files = sorted(os.path.join(d, f) for top in dirs for d, _, fs in os.walk(top) for f in fs
               if not f.endswith(skip))
secs = re.compile(r'[0-9.]+ secs')


def run(exe, args, out):
    env = dict(os.environ)
    env['LD_LIBRARY_PATH'] = os.path.dirname(exe)
    p = subprocess.run([exe, '--no-solve'] + args + ['--write-mps', out], capture_output=True,
                       text=True, errors='replace', env=env, timeout=120)
    log = secs.sub('X secs', p.stdout + p.stderr).replace(out, 'OUT')
    return p.returncode, log


bad = 0
runs = 0
with tempfile.TemporaryDirectory() as tmp:
    for f in files:
        variants = [[], ['--layout', 'free'], ['--layout', 'fixed']]
        if os.path.getsize(f) < 100000:
            variants += [['-p', '300'], ['-p', '300', '--layout', 'fixed']]
        for v in variants:
            a, b = os.path.join(tmp, 'a.mps'), os.path.join(tmp, 'b.mps')
            for x in (a, b):
                if os.path.exists(x):
                    os.remove(x)
            ra = run(ref, v + [f], a)
            rb = run(new, v + [f], b)
            runs += 1
            same = ra == rb and os.path.exists(a) == os.path.exists(b) and (
                not os.path.exists(a) or filecmp.cmp(a, b, shallow=False))
            if not same:
                bad += 1
                print('DIFF', f, ' '.join(v), 'rc', ra[0], rb[0])
                if ra[1] != rb[1]:
                    la, lb = ra[1].splitlines(), rb[1].splitlines()
                    for k in range(max(len(la), len(lb))):
                        x = la[k] if k < len(la) else None
                        y = lb[k] if k < len(lb) else None
                        if x != y:
                            print('   ref:', x)
                            print('   new:', y)
                            break
print(f'{len(files)} files, {runs} runs, {bad} differences')
sys.exit(1 if bad else 0)
