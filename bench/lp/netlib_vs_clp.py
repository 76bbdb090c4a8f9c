#!/usr/bin/env python3
"""Wall time of runzento (default settings) against `clp FILE -dualSimplex` over every
model of a folder: the two solvers alternate on each model, R runs each, medians. Writes a
markdown table (per model: our time, clp time, ratio, iterations, objective check against the
folder's MANIFEST.csv) and the shifted geometric mean (shift 0.1 s) of the ratios.

    netlib_vs_clp.py RUNZENTO FOLDER [-r 3] [-o table.md] [-m model ...] [--relax]

With --relax the integer models of the folder (MIPLIB) are solved as LP relaxations by both
(clp ignores integrality) and our objective is checked against clp's instead of the published
integer optimum.

Times are whole processes (read, solve, write nothing), as a user sees them."""
import argparse
import csv
import math
import os
import platform
import re
import statistics
import subprocess
import sys
import tempfile
import time


def timed(cmd, limit):
    """Wall and CPU (user + system) seconds of one process, and its output. CPU time is the
    fairer measure on a machine shared with other jobs."""
    t0 = time.perf_counter()
    with tempfile.TemporaryFile(mode="w+") as out:
        p = subprocess.Popen(cmd, stdout=out, stderr=subprocess.STDOUT, text=True)
        ru = None
        while True:
            pid, status, ru = os.wait4(p.pid, os.WNOHANG)
            if pid != 0:
                break
            if time.perf_counter() - t0 > limit:
                p.kill()
                _, _, ru = os.wait4(p.pid, 0)
                return limit, limit, ""
            time.sleep(0.002)
        p.returncode = os.waitstatus_to_exitcode(status)
        wall = time.perf_counter() - t0
        out.seek(0)
        return wall, ru.ru_utime + ru.ru_stime, out.read()


def zento_result(out):
    obj = re.search(r"^Objective\s+(\S+)", out, re.M)
    it = re.search(r"^Iterations (\d+) simplex", out, re.M)
    st = re.search(r"^Status\s+(.*)$", out, re.M)
    return (float(obj.group(1)) if obj else None, int(it.group(1)) if it else None,
            st.group(1).strip() if st else "?")


def clp_result(out):
    m = re.search(r"Optimal objective (\S+) - (\d+) iterations", out)
    if m:
        return float(m.group(1)), int(m.group(2))
    return None, None


def versions(zexe):
    zv = (subprocess.run([zexe, "-v"], capture_output=True, text=True).stdout.strip().splitlines()
          or ["?"])[0]
    cv = "?"
    try:
        cv = subprocess.run(["dpkg-query", "-W", "-f=${Version}", "coinor-clp"],
                            capture_output=True, text=True).stdout.strip()
    except OSError:
        pass
    cpu = "?"
    try:
        with open("/proc/cpuinfo") as f:
            for line in f:
                if line.startswith("model name"):
                    cpu = line.split(":", 1)[1].strip()
                    break
    except OSError:
        pass
    return zv, cv, cpu


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("exe")
    ap.add_argument("folder")
    ap.add_argument("-r", "--runs", type=int, default=3)
    ap.add_argument("-o", "--out")
    ap.add_argument("-m", "--models", nargs="*")
    ap.add_argument("--limit", type=float, default=300.0)
    ap.add_argument("--relax", action="store_true")
    a = ap.parse_args()

    known = {}
    mf = os.path.join(a.folder, "MANIFEST.csv")
    if os.path.exists(mf):
        with open(mf) as f:
            for row in csv.DictReader(f):
                try:
                    known[row["name"]] = float(row["known_optimum"])
                except (KeyError, ValueError):
                    pass
    files = sorted(x for x in os.listdir(a.folder) if x.endswith(".mps.gz") or x.endswith(".mps"))
    names = [re.sub(r"\.mps(\.gz)?$", "", x) for x in files]
    if a.models:
        keep = set(a.models)
        files = [f for f, n in zip(files, names) if n in keep]
        names = [n for n in names if n in keep]

    rows = []
    shift = 0.1
    for f, name in zip(files, names):
        path = os.path.join(a.folder, f)
        zw, zc, cw, cc = [], [], [], []
        zout = cout = ""
        for _ in range(a.runs):
            w, c, zout = timed([a.exe, "-q"] + (["--relax"] if a.relax else []) + [path], a.limit)
            zw.append(w)
            zc.append(c)
            w, c, cout = timed(["clp", path, "-dualSimplex"], a.limit)
            cw.append(w)
            cc.append(c)
        zobj, zit, zst = zento_result(zout)
        cobj, cit = clp_result(cout)
        ref = cobj if a.relax else known.get(name)
        ok = "-"
        if ref is not None and zobj is not None:
            ok = "ok" if abs(zobj - ref) <= 1e-6 * max(1.0, abs(ref)) else "WRONG"
        elif ref is not None:
            ok = "no answer"
        r = dict(name=name, zw=statistics.median(zw), cw=statistics.median(cw),
                 zc=statistics.median(zc), cc=statistics.median(cc), zit=zit, cit=cit, zst=zst,
                 ok=ok)
        rows.append(r)
        print(f"{name:12s} cpu {r['zc']:8.3f} / {r['cc']:8.3f} wall {r['zw']:8.3f} / {r['cw']:8.3f}"
              f" it {zit} / {cit} {ok}", file=sys.stderr, flush=True)

    n = len(rows)

    def geo(key):
        return math.exp(sum(math.log(r[key] + shift) for r in rows) / n) - shift

    def geo_ratio(zk, ck):
        return math.exp(sum(math.log((r[zk] + shift) / (r[ck] + shift)) for r in rows) / n)

    def ratio(r, zk, ck):
        return r[zk] / r[ck] if r[ck] > 0 else float("inf")

    nbad = sum(1 for r in rows if r["ok"] not in ("ok", "-"))
    zv, cv, cpu = versions(a.exe)
    lines = []
    lines.append(f"# {os.path.basename(os.path.normpath(a.folder))}: runzento against clp -dualSimplex\n")
    lines.append(f"Machine: {cpu}, {os.cpu_count()} cores, {platform.system()} {platform.release()}, "
                 "shared with other engineers' builds and tests while measured.  ")
    lines.append(f"Zento: `{zv}` (Release, default settings, one thread"
                 f"{'; LP relaxations, checked against clp' if a.relax else ''}).  ")
    lines.append(f"clp: Debian coinor-clp {cv}, `clp FILE -dualSimplex` (its presolve on, as by default).  ")
    lines.append(f"Each model: the two alternate, {a.runs} runs each, medians of whole processes (read and "
                 "solve): CPU seconds (user + system) and wall seconds. Under load the CPU time is the "
                 "steadier measure; wall times are given too.\n")
    lines.append("| model | ours cpu s | clp cpu s | ratio cpu | ours wall s | clp wall s | ratio wall "
                 "| our iters | clp iters | optimum |")
    lines.append("|---|---|---|---|---|---|---|---|---|---|")
    for r in rows:
        lines.append(f"| {r['name']} | {r['zc']:.3f} | {r['cc']:.3f} | {ratio(r, 'zc', 'cc'):.2f} | "
                     f"{r['zw']:.3f} | {r['cw']:.3f} | {ratio(r, 'zw', 'cw'):.2f} | {r['zit']} | "
                     f"{r['cit']} | {r['ok']} |")
    lines.append("")
    for zk, ck, what in (("zc", "cc", "CPU"), ("zw", "cw", "wall")):
        slow = [r["name"] for r in rows if ratio(r, zk, ck) > 3.0]
        lines.append(f"{what}: shifted geometric mean (shift {shift} s) of ours / clp over {n} models "
                     f"**{geo_ratio(zk, ck):.3f}** (means ours {geo(zk):.3f} s, clp {geo(ck):.3f} s); "
                     f"slower than 3x clp: {', '.join(slow) if slow else 'none'}.  ")
    what = "clp's objective" if a.relax else "the published optimum"
    lines.append(f"Models without {what} (1e-6 relative): {nbad}.")
    text = "\n".join(lines) + "\n"
    if a.out:
        with open(a.out, "w") as f:
            f.write(text)
    print(text)


if __name__ == "__main__":
    main()
