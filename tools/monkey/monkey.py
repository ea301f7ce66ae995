#!/usr/bin/env python3
"""Drives the calendar in calendar-sim with long random sequences of taps, drags, keys, typed text,
clock jumps and reload messages, on a seeded store, and checks after every run that the simulator
neither crashed nor hung and that the stores are intact.

    monkey.py --sim SIM --ctl CTL --app APP [--seed N] [--actions N] [--chunk N] [--work DIR]
    monkey.py --sim SIM --ctl CTL --app APP --replay SCRIPT [SCRIPT ...]

A run is cut into chunks: each chunk is one calendar-sim process on the same device root, so the
calendar is started again after the monkey taps an exit button and the store carries over from run
to run, as on the phone. Under AddressSanitizer a sanitizer report ends the process with an error
status, which fails the run. --write-corpus DIR keeps the generated chunks as replayable scripts.
"""
import argparse
import os
import random
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile

KEYS = ["up", "down", "left", "right", "ok", "pageup", "pagedown"]
LATIN = "abcdefghijklmnopqrstuvwxyz ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.,-:/"
CHINESE = "日月年会议中文字开始结束提醒重复农历星期周天小时分钟"
# The bottom bar and the date header are where most of the calendar's buttons are, so taps land
# there more often than anywhere else.
HOT_BANDS = [(284, 319), (45, 75)]

SEED_EVENTS = [
    ["--subject", "Team", "--start", "2026-11-10 10:00", "--end", "2026-11-10 11:00",
     "--colour", "11548", "--alarm", "11533"],
    ["--subject", "Trip", "--start", "2026-11-16 09:00", "--end", "2026-11-19 18:00"],
    ["--subject", "Holiday", "--start", "2026-11-25 00:00", "--end", "2026-11-25 23:59",
     "--all-day"],
    ["--subject", "Gym", "--start", "2026-11-02 18:00", "--end", "2026-11-02 19:00",
     "--repeat", "weekly:2,4", "--colour", "11545"],
    ["--subject", "Rent", "--start", "2026-01-31 09:00", "--end", "2026-01-31 09:30",
     "--repeat", "monthly:31"],
    ["--subject", "Birthday", "--start", "2024-02-29 08:00", "--end", "2024-02-29 09:00",
     "--repeat", "yearly:2/29"],
    ["--subject", "Standup", "--start", "2026-11-02 09:00", "--end", "2026-11-02 09:15",
     "--repeat", "workdays", "--count", "40"],
    ["--subject", "会议 " * 60, "--start", "2026-11-21 14:00", "--end", "2026-11-21 15:00"],
    ["--subject", "Late", "--start", "2026-11-21 22:00", "--end", "2026-11-22 00:00"],
]


def random_text(rng):
    roll = rng.random()
    if roll < 0.45:
        return "".join(rng.choice(LATIN) for _ in range(rng.randint(1, 20))).strip() or "x"
    if roll < 0.8:
        return "".join(rng.choice(CHINESE) for _ in range(rng.randint(1, 12)))
    return "".join(rng.choice(LATIN + CHINESE) for _ in range(rng.randint(200, 400)))


def random_point(rng):
    x = rng.randint(0, 239)
    if rng.random() < 0.5:
        low, high = rng.choice(HOT_BANDS)
        return x, rng.randint(low, high)
    return x, rng.randint(0, 319)


def random_clock(rng):
    year = rng.choice([1970, 2026, 2026, 2026, 2027, 2030, rng.randint(1970, 2030)])
    return '"%04d-%02d-%02d %02d:%02d"' % (year, rng.randint(1, 12), rng.randint(1, 28),
                                           rng.randint(0, 23), rng.randint(0, 59))


def random_action(rng):
    """One script command; drags are three commands and count as one action."""
    roll = rng.random()
    if roll < 0.45:
        return ["tap %d %d" % random_point(rng)]
    if roll < 0.55:
        x, y = random_point(rng)
        moves = ["move %d %d" % (min(239, max(0, x + rng.randint(-80, 80))),
                                 min(319, max(0, y + rng.randint(-120, 120))))
                 for _ in range(rng.randint(1, 4))]
        last = moves[-1].split()[1:]
        return ["down %d %d" % (x, y)] + moves + ["up %s %s" % (last[0], last[1])]
    if roll < 0.8:
        return ["key " + rng.choice(KEYS)]
    if roll < 0.9:
        return ["type " + random_text(rng)]
    if roll < 0.95:
        return ["wait %d" % rng.choice([10, 500, 3000, 61000])]
    if roll < 0.98:
        return ["clock " + random_clock(rng)]
    return ["send 10041"]


def generate(rng, actions):
    lines = []
    for _ in range(actions):
        lines.extend(random_action(rng))
    return lines


def seed_store(ctl, root):
    for event in SEED_EVENTS:
        subprocess.run([ctl, "--root", root, "event", "add"] + event, check=True,
                       stdout=subprocess.DEVNULL)


def check_store(ctl, root):
    """Every store file is whole and nothing was set aside as damaged."""
    problems = []
    for folder, _, files in os.walk(root):
        for name in files:
            if ".corrupt-" in name:
                problems.append("a store was set aside: " + os.path.join(folder, name))
            if name.endswith(".db"):
                path = os.path.join(folder, name)
                with sqlite3.connect(path) as db:
                    verdict = db.execute("PRAGMA integrity_check").fetchone()[0]
                if verdict != "ok":
                    problems.append("%s: %s" % (path, verdict))
    listing = subprocess.run([ctl, "--root", root, "event", "list"], capture_output=True, text=True)
    if listing.returncode != 0:
        problems.append("calendar-ctl event list failed: " + listing.stderr.strip())
    return problems


def run_process(args, root, script_path):
    """Runs one simulator process; returns (line it stopped at or None when it ran to the end,
    problem or None)."""
    command = [args.sim, "--headless", "--app", args.app, "--root", root,
               "--now", "2026-11-21 09:41", "--script", script_path]
    try:
        done = subprocess.run(command, capture_output=True, text=True, timeout=args.timeout,
                              errors="replace")
    except subprocess.TimeoutExpired:
        return None, "hang: %s did not finish within %d s" % (script_path, args.timeout)
    if done.returncode == 0:
        return None, None
    # The monkey ended the calendar (an exit button): the rest of the chunk runs in a new process.
    ended = re.search(r"script:(\d+): the application ended before", done.stderr)
    if done.returncode == 1 and ended:
        return int(ended.group(1)), None
    return None, "%s: exit status %d\n%s" % (script_path, done.returncode, done.stderr[-4000:])


def run_chunk(args, root, script_path):
    """Runs a chunk to its end, starting the calendar again each time the monkey ends it; returns
    (processes started, problem or None)."""
    with open(script_path, encoding="utf-8") as script:
        lines = script.read().splitlines()
    current = script_path
    processes = 0
    while True:
        processes += 1
        stopped, problem = run_process(args, root, current)
        if problem or stopped is None:
            return processes, problem
        rest = lines[stopped - 1:] if current == script_path else rest[stopped - 1:]
        if not any(line.strip() and not line.startswith("#") for line in rest):
            return processes, None
        # The rest goes to the work folder: a replayed corpus lives in the source tree.
        current = os.path.join(args.work, os.path.basename(script_path) + ".rest")
        with open(current, "w", encoding="utf-8") as out:
            out.write("\n".join(rest) + "\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--sim", required=True)
    parser.add_argument("--ctl", required=True)
    parser.add_argument("--app", required=True)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--actions", type=int, default=2000)
    parser.add_argument("--chunk", type=int, default=1000)
    parser.add_argument("--timeout", type=int, default=300)
    parser.add_argument("--work")
    parser.add_argument("--write-corpus")
    parser.add_argument("--replay", nargs="+")
    args = parser.parse_args()

    work = args.work = args.work or tempfile.mkdtemp(prefix="monkey-")
    root = os.path.join(work, "root")
    # Every run starts from the same seeded store, also when --work names a folder used before.
    shutil.rmtree(root, ignore_errors=True)
    os.makedirs(root)
    seed_store(args.ctl, root)

    if args.replay:
        scripts = args.replay
    else:
        rng = random.Random(args.seed)
        scripts = []
        left = args.actions
        index = 0
        while left > 0:
            size = min(args.chunk, left)
            folder = args.write_corpus or work
            os.makedirs(folder, exist_ok=True)
            path = os.path.join(folder, "monkey-%d-%03d.script" % (args.seed, index))
            with open(path, "w", encoding="utf-8") as out:
                out.write("# monkey seed %d, chunk %d: %d random actions\n" % (args.seed, index, size))
                out.write("\n".join(generate(rng, size)) + "\n")
            scripts.append(path)
            left -= size
            index += 1

    commands = 0
    processes = 0
    for path in scripts:
        started, problem = run_chunk(args, root, path)
        processes += started
        if problem:
            print("monkey: FAILED " + problem, file=sys.stderr)
            return 1
        with open(path, encoding="utf-8") as script:
            commands += sum(1 for line in script if line.strip() and not line.startswith("#"))
        problems = check_store(args.ctl, root)
        if problems:
            print("monkey: FAILED after %s:\n  %s" % (path, "\n  ".join(problems)), file=sys.stderr)
            return 1
    print("monkey: %d script commands in %d calendar runs, no crash, no hang, stores intact"
          % (commands, processes))
    return 0


if __name__ == "__main__":
    sys.exit(main())
