#!/usr/bin/env python3
"""Read time of the netlib models: CPU of `runzento -q --no-solve FILE` minus `runzento
--version`, median of N runs, for one or more builds.

usage: mps_readtime.py [-r N] RUNZENTO... [-- FILES...]
"""
import glob, os, resource, statistics, subprocess, sys

args = sys.argv[1:]
reps = 5
if args[:1] == ['-r']:
    reps, args = int(args[1]), args[2:]
files = []
if '--' in args:
    k = args.index('--')
    args, files = args[:k], args[k + 1:]
exes = args
if not files:
    here = os.path.dirname(os.path.abspath(__file__))
    files = sorted(glob.glob(os.path.join(here, '../../tests/data/netlib/*.mps.gz')))


def cpu(exe, argv):
    env = dict(os.environ, LD_LIBRARY_PATH=os.path.dirname(exe))
    r0 = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run([exe] + argv, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=env)
    r1 = resource.getrusage(resource.RUSAGE_CHILDREN)
    return (r1.ru_utime - r0.ru_utime) + (r1.ru_stime - r0.ru_stime)


def median(exe, argv):
    return statistics.median(cpu(exe, argv) for _ in range(reps))


base = [median(e, ['--version']) for e in exes]
tot = [0.0] * len(exes)
print('| model | ' + ' | '.join(f'build {k + 1} ms' for k in range(len(exes))) +
      (' | ratio |' if len(exes) == 2 else ' |'))
print('|---' * (len(exes) + 1 + (len(exes) == 2)) + '|')
for f in files:
    ts = []
    for k, e in enumerate(exes):
        # Interleave the builds so that load on the machine hits both alike.
        ts.append(max(0.0, median(e, ['-q', '--no-solve', f]) - base[k]) * 1000)
        tot[k] += ts[-1]
    name = os.path.basename(f).replace('.mps.gz', '')
    ratio = f' | {ts[0] / ts[1]:.2f}' if len(exes) == 2 and ts[1] > 0 else (' | -' if len(exes) == 2 else '')
    print(f'| {name} | ' + ' | '.join(f'{t:.1f}' for t in ts) + ratio + ' |')
print('| total | ' + ' | '.join(f'{t:.1f}' for t in tot) +
      (f' | {tot[0] / tot[1]:.2f}' if len(exes) == 2 and tot[1] > 0 else '') + ' |')
print('process start (--version) ms: ' + ', '.join(f'{b * 1000:.1f}' for b in base))
