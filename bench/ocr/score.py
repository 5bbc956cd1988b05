#!/usr/bin/env python3
"""Scores text recognisers against a set of pictures with known texts, side by side in one run.

  score.py SET_DIR --run cli='tesseract {image} - -l spa+eng' --run ours='our-reader {image}'
  score.py SET_DIR --texts ours=DIR            texts made elsewhere: DIR/ID.txt; what they cost
                                               in all: --texts-cpu ours=SECONDS

A command gets the image's path for {image} and writes its text to standard output (no shell:
put variables in front with `env NAME=value ...`). The commands take turns on every image.
The first --run or --texts is the one the others are compared with.

CER   edits / truth characters, reading order counts; white space (line feeds too) is one space
WER   the same on words
BAG   words lost or invented whatever the order (1 - F1 of the two word multisets)
LINE  truth lines that came out exactly as one line each (a TAB of the truth: space or line feed)
CPU   user seconds of the command and its children; the wall time beside it
Text is NFC-normalised; --fold also maps curly quotes, dashes and the ellipsis to plain ones.
"""
import argparse, collections, json, os, re, shlex, subprocess, sys, time, unicodedata

FOLD = str.maketrans({"“": '"', "”": '"', "„": '"', "‘": "'", "’": "'", "´": "'", "`": "'", "–": "-", "—": "-", "−": "-", "…": "..."})


def clean(t, fold):
    t = unicodedata.normalize("NFC", t).replace("\f", "\n").replace("\u00a0", " ")
    return t.translate(FOLD) if fold else t


def distance(a, b):
    """Levenshtein distance of two sequences (Myers' bit vectors on Python's long integers)."""
    if not a or not b:
        return len(a) or len(b)
    m, full = len(a), (1 << len(a)) - 1
    peq = collections.defaultdict(int)
    for i, c in enumerate(a):
        peq[c] |= 1 << i
    pv, mv, score, top = full, 0, m, 1 << (m - 1)
    for c in b:
        eq = peq.get(c, 0)
        xv = eq | mv
        xh = (((eq & pv) + pv) ^ pv) | eq
        ph, mh = mv | ~(xh | pv) & full, pv & xh
        score += bool(ph & top) - bool(mh & top)
        ph, mh = (ph << 1 | 1) & full, mh << 1 & full
        pv, mv = mh | ~(xv | ph) & full, ph & xv
    return score


def run(cmd, image):
    t = time.monotonic()
    p = subprocess.Popen([a.replace("{image}", image) for a in shlex.split(cmd)], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    out = p.stdout.read()
    _, status, ru = os.wait4(p.pid, 0)
    p.returncode = os.waitstatus_to_exitcode(status)
    if p.returncode:
        print(f"exit {p.returncode}: {cmd} on {image}", file=sys.stderr)
    return out.decode("utf-8", "replace"), ru.ru_utime, time.monotonic() - t


def measure(truth, got, fold):
    truth, got = [clean(l, fold) for l in truth], clean(got, fold)
    words = lambda t: t.split()
    ref, hyp = words("\n".join(truth)), words(got)
    common = sum((collections.Counter(ref) & collections.Counter(hyp)).values())
    lines = collections.Counter(" ".join(l.split()) for l in got.split("\n") if l.strip())
    good = 0
    for l in truth:
        whole, parts = " ".join(l.split()), [" ".join(p.split()) for p in l.split("\t")]
        if lines[whole]:
            lines[whole] -= 1
            good += 1
        elif len(parts) > 1 and all(lines[p] for p in parts):
            good += 1
    r, h = " ".join(ref), " ".join(hyp)
    return dict(ce=distance(r, h), cn=len(r), we=distance(ref, hyp), wn=len(ref),
                bag_lost=len(ref) + len(hyp) - 2 * common, bag_n=len(ref) + len(hyp), good=good, ln=len(truth))


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("set_dir")
    ap.add_argument("--run", action="append", default=[], metavar="NAME=COMMAND")
    ap.add_argument("--texts", action="append", default=[], metavar="NAME=DIR")
    ap.add_argument("--texts-cpu", action="append", default=[], metavar="NAME=SECONDS", help="user seconds all texts of NAME took together")
    ap.add_argument("--cls", nargs="*", help="only these classes")
    ap.add_argument("--fold", action="store_true")
    ap.add_argument("--show", type=int, default=0, help="the N worst samples of every recogniser")
    ap.add_argument("--by", default="cls", help="group by: cls, lang, scale, aa, dark, font")
    ap.add_argument("--json", help="all numbers and texts to this file")
    a = ap.parse_args()
    who = [("run", *v.split("=", 1)) for v in a.run] + [("texts", *v.split("=", 1)) for v in a.texts]
    samples = [s for s in json.load(open(os.path.join(a.set_dir, "truth.json"))) if not a.cls or s["cls"] in a.cls]
    spent = {name: float(seconds) for name, seconds in (v.split("=", 1) for v in a.texts_cpu)}
    res = {name: {} for _, name, _ in who}
    for s in samples:
        image = os.path.join(a.set_dir, "img", s["id"] + ".png")
        for kind, name, what in who:
            if kind == "run":
                text, cpu, wall = run(what, image)
            else:
                # One process made them all: each sample gets the same share.
                text = open(os.path.join(what, s["id"] + ".txt")).read()
                cpu, wall = spent.get(name, 0.0) / len(samples), 0.0
            res[name][s["id"]] = dict(measure(s["lines"], text, a.fold), cpu=cpu, wall=wall, text=text)
    pct = lambda x, n: f"{100 * x / max(n, 1):6.2f}"
    groups = collections.OrderedDict()
    for s in samples:
        groups.setdefault(str(s[a.by]), []).append(s["id"])
    groups["ALL"] = [s["id"] for s in samples]
    base = who[0][1]
    for _, name, _ in who:
        print(f"\n{name}\n{a.by:10} {'n':>3} {'CER%':>6} {'WER%':>6} {'BAG%':>6} {'LINE%':>6} {'cpu s':>7} {'wall s':>7}" + ("   cpu x  CER x" if name != base else ""))
        for g, ids in groups.items():
            tot = lambda k, n=name: sum(res[n][i][k] for i in ids)
            extra = ""
            if name != base:
                extra = f"  {tot('cpu') / max(tot('cpu', base), 1e-9):6.2f} {tot('ce') / max(tot('ce', base), 1e-9):6.2f}"
            print(f"{g:10} {len(ids):3} {pct(tot('ce'), tot('cn'))} {pct(tot('we'), tot('wn'))} {pct(tot('bag_lost'), tot('bag_n'))} {pct(tot('good'), tot('ln'))} {tot('cpu'):7.2f} {tot('wall'):7.2f}{extra}")
        for i in sorted(res[name], key=lambda i: -res[name][i]["ce"])[:a.show]:
            r = res[name][i]
            print(f"--- {i}: {r['ce']} edits of {r['cn']}\n{r['text'].strip()}")
    if a.json:
        json.dump(res, open(a.json, "w"), ensure_ascii=False, indent=1)


if __name__ == "__main__":
    main()
