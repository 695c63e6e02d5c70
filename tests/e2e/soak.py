#!/usr/bin/env python3
"""Runs dravo-host for as long as one likes on simulated lines with every kind of fault, writes going on all the time.

    scripts/soak [MINUTES]      default: 30

Four lines at once, each a `dravo-host simulate` and a `dravo-host monitor` with commands on standard input. Whatever is
shown as fresh or read by a command is checked: of what is written, that no write that is done since has replaced it; of
what moves by itself, that it is this variable's, of this station and not old. Every command has exactly one answer.
Beside them the line engine's own soak runs in virtual time, 100,000 exchanges a minute.

Prints a table each minute: outcomes since the start, memory and open files of each process. Exit status 1 where a value
is wrong, a command is answered twice or not at all, a program ends, or a program has 2 MiB or one open file more than it
had at most in its first five minutes (the first third of a shorter run). The first of the lines takes half of that in the
first half hour: monitor counts for every station number that an answer bears, 247 in the end.

With DRAVO_HOST=PATH for another program than that of the native build.
"""
import json
import os
import random
import subprocess
import sys
import tempfile
import threading
import time

HOST = os.environ.get("DRAVO_HOST", "build/native/host/dravo-host")
STATIONS = (1, 21, 41)  # far apart: those of the simulation are out of step by 7 times their difference
DEAD = 61
STEPS_PER_SECOND = 5  # of what moves, at most
SLACK_STEPS = 40  # retries, a busy machine; the stations are 140 out of step
MOST_PENDING = 20
GROWTH_KB = 2048
WARM_UP_SECONDS = 300
MEASURE_SECONDS = 5
FAULTS = "noreply=0.03,exception=0.03,flip=0.03,truncated=0.03,stray=0.03"
REFUSED = "refuse=21:500-509,dead=%d" % DEAD
LINES = {  # faults, other options of both programs, those of the monitor
    # Another station's number under a right CRC passes for its answer where answers are late as well.
    "stations": (f"{FAULTS},{REFUSED},wrongstation=0.05", [], []),
    "late": (f"{FAULTS},{REFUSED},late=0.1,delay=10", [], ["--merge", "time", "--retries", "0"]),
    "echo": (f"{FAULTS},{REFUSED},late=0.03,echo", [], ["--echo", "on"]),
    "remote": (f"{FAULTS},{REFUSED},late=0.03", ["--remote-node", "3"], []),
}


def registers(number):
    return [number & 0xFFFF]


# What the values of a variable are: moving ones at a step, written ones after write number n.
MOVING = {
    "counter": ("7,102", lambda step: registers(step)),
    "hundreds": ("8,256", lambda step: registers(step * 100)),
    "thousands": ("13,0", lambda step: [step * 1000 & 0xFFFFFFFF]),
}
WRITTEN = {
    "register": ("7,300", 1, registers),
    "pair": ("7,310", 2, lambda n: registers(n) + registers(~n)),
    "long": ("12,320", 1, lambda n: [(n & 0xFFFF) * 0x10001]),
    "coils": ("1,500", 16, lambda n: [n >> i & 1 for i in range(16)]),
    "bit 5": ("15,330.5", 1, lambda n: [n & 1]),
    "bit 6": ("15,330.6", 1, lambda n: [n & 1]),
}
BIT_WORD = "7,330"


class Written:
    """A variable that commands write. Each write has a number that no other variable's has."""

    def __init__(self, name, place):
        _, self.count, self.encode = WRITTEN[name]
        self.place = place
        self.asked = self.done = 0

    def number(self, n):
        return n << 6 | self.place << 1 | n & 1 if n else 0

    def values(self, n):
        return [0] * self.count if n == 0 else self.encode(self.number(n))

    def may_be(self, values):
        return any(values == self.values(n) for n in range(self.done, self.asked + 1))


class Line:
    def __init__(self, name, folder):
        self.name = name
        self.lock = threading.Lock()
        self.wrong, self.checked, self.answers = [], 0, {}
        self.pending = {}  # by id: label and, of a write, its number
        self.statistics = {}
        self.written, self.clocks, self.next_id = {}, {}, 1
        faults, both, of_monitor = LINES[name]
        device, tags = f"{folder}/{name}", f"{folder}/{name}.csv"
        with open(tags, "w") as file:
            file.write("label,type,address,station,count\n")
            for row in self.rows():
                file.write(row + "\n")
        both = both + ["--timeout", "100"]
        stations = ",".join(map(str, STATIONS + (DEAD,)))
        self.log = open(f"{folder}/{name}.log", "w+")
        self.simulate = subprocess.Popen(
            [HOST, "simulate", "--link", device, "--stations", stations, "--faults", faults,
             "--turnaround", "5,21:8~10"] + both, stdout=subprocess.DEVNULL, stderr=self.log)
        while not os.path.exists(device) and self.simulate.poll() is None:
            time.sleep(0.05)
        self.monitor = subprocess.Popen(
            [HOST, "monitor", "--port", device, "--tags", tags, "--format", "json", "--commands", "-",
             "--until-input-ends", "--statistics", "-", "--every", "5", "--down-after", "5"] + both + of_monitor,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self.log)
        self.figures, self.worst = {}, {}  # memory in KiB and open files of each program: now, most in the warm-up
        self.reader = threading.Thread(target=self.read, daemon=True)
        self.reader.start()

    def rows(self):
        for station in STATIONS:
            for name, (where, _) in MOVING.items():
                yield f"{name} {station},{where},{station},1"
            for name, (where, count, _) in WRITTEN.items():
                self.written[f"{name} {station}"] = Written(name, len(self.written))
                yield f"{name} {station},{where},{station},{count}"
            yield f"bit word {station},{BIT_WORD},{station},1"
        yield "refused,7,500,21,1"
        yield f"dead,7,1,{DEAD},1"

    def fail(self, what):
        self.wrong.append(f"{self.name}: {what}")

    def read(self):
        for text in self.monitor.stdout:
            try:
                record = json.loads(text)
                with self.lock:
                    self.take(record)
            except Exception as broken:  # whatever it is, it was not seen to be right
                self.fail(f"cannot read {text!r}: {broken!r}")

    def take(self, record):
        kind = record.get("record")
        if kind == "statistics":
            self.statistics = record if record["station"] is None else self.statistics
        elif kind == "command":
            self.take_answer(record)
        elif record["state"] == "fresh":
            self.check(record["label"], record["values"], time.time() - record["age_ms"] / 1000, record)

    def take_answer(self, record):
        label, number = self.pending.pop(record["id"], (None, None))
        if label != record["label"]:
            return self.fail(f"nobody waits for {record}")
        outcome = ("read " if number is None else "write ") + record["outcome"]
        self.answers[outcome] = self.answers.get(outcome, 0) + 1
        if record["outcome"] == "done" and number is not None:
            self.written[label].done = number
        if record["outcome"] == "done":
            self.check(label, record["values"], time.time(), record)

    def check(self, label, values, when, record):
        self.checked += 1
        name, _, station = label.rpartition(" ")
        if label in self.written:
            good = self.written[label].may_be(values)
        elif name == "bit word":
            good = values[0] & ~0x60 == 0
        elif name in MOVING:
            good = self.moves(station, MOVING[name][1], values, when)
        else:
            good = False  # refused or dead
        if not good:
            self.fail(f"wrong value: {record}")

    # One clock for each station, as far as anything read has shown it.
    def moves(self, station, encode, values, when):
        if station not in self.clocks:
            self.clocks[station] = (7 * int(station), self.start)
        step, since = self.clocks[station]
        last = step + int(max(when - since, 0) * STEPS_PER_SECOND) + SLACK_STEPS
        for seen in range(max(step - SLACK_STEPS, 0), last + 1):
            if encode(seen) == values:
                if seen > step:
                    self.clocks[station] = (seen, when)
                return True
        return False

    def ask(self):
        with self.lock:
            if len(self.pending) >= MOST_PENDING:
                return
            label = random.choice(list(self.written))
            one = self.written[label]
            command = {"read": {"label": label}, "id": self.next_id}
            number = None
            if random.random() < 0.7:
                number = one.asked = one.asked + 1
                command = {"write": {"label": label, "values": one.values(number)}, "id": self.next_id}
            self.pending[self.next_id] = (label, number)
            self.next_id += 1
        try:
            self.monitor.stdin.write(json.dumps(command).encode() + b"\n")
            self.monitor.stdin.flush()
        except BrokenPipeError:
            pass  # the program has ended, which is looked for

    def programs(self):
        return (("simulate", self.simulate), ("monitor", self.monitor))

    def measure(self, warming_up):
        for name, program in self.programs():
            try:
                with open(f"/proc/{program.pid}/status") as status:
                    kb = next(int(line.split()[1]) for line in status if line.startswith("VmRSS"))
                now = (kb, len(os.listdir(f"/proc/{program.pid}/fd")))
            except (OSError, StopIteration):
                self.fail(f"{name} has ended with status {program.poll()}")
                continue
            self.figures[name] = now
            worst = self.worst.get(name, (0, 0))
            if warming_up:
                self.worst[name] = tuple(map(max, worst, now))
            elif now[0] > worst[0] + GROWTH_KB or now[1] > worst[1]:
                self.fail(f"{name} grew: {now[0]} KiB and {now[1]} open files, {worst[0]} and {worst[1]} at first")

    def row(self):
        counts = self.statistics
        names = ("requests", "retries", "answered", "no_answer", "damaged", "refused", "late_dropped", "foreign_dropped",
                 "echoes")
        with self.lock:
            answers = [self.answers.get(f"{what} {outcome}", 0) for what in ("write", "read")
                       for outcome in ("done", "refused", "failed", "not sure")]
            return "%-9s" % self.name + "".join("%9s" % counts.get(name, 0) for name in names) + "  " + \
                "/".join(map(str, answers[:4])) + "  " + "/".join(map(str, answers[4:])) + \
                f"  {self.checked}  {len(self.wrong)}  " + "  ".join("%d/%d" % one for one in self.figures.values())

    def end(self):
        self.monitor.stdin.close()
        try:
            status = self.monitor.wait(60)
            self.reader.join(10)
            if status not in (0, 1):  # 1: something failed, as it should on such a line
                self.fail(f"monitor ended with status {status}")
        except subprocess.TimeoutExpired:
            self.fail("monitor does not end though its input has")
        if self.pending:
            self.fail(f"{len(self.pending)} commands without an answer, such as {list(self.pending)[0]}")
        self.simulate.terminate()
        if self.simulate.wait(10) != 0:
            self.fail(f"simulate ended with status {self.simulate.returncode}")

    def kill(self):
        for _, program in self.programs():
            if program.poll() is None:
                program.kill()


class VirtualTime:
    """The line engine's own soak, a batch each minute."""

    def __init__(self):
        self.exchanges, self.wrong, self.batch = 0, [], None

    def next(self):
        self.end()
        self.batch = subprocess.Popen(["nice", "build/native/tests/line-soak", "100000"], stdout=subprocess.PIPE)

    def end(self):
        said = self.batch.communicate()[0].decode() if self.batch else ""
        if self.batch and self.batch.returncode != 0:
            self.wrong.append("line engine: " + said)
        elif self.batch:
            self.exchanges += int(said.splitlines()[-1].split()[0])
        self.batch = None


def run(minutes):
    with tempfile.TemporaryDirectory() as folder:
        started = time.time()
        Line.start = started
        lines = []
        engine = VirtualTime()
        try:
            for name in LINES:
                lines.append(Line(name, folder))
            told = measured = 0
            while time.time() < started + 60 * minutes:
                time.sleep(0.25)
                seconds = int(time.time() - started)
                for line in lines:
                    line.ask()
                    if seconds >= measured + MEASURE_SECONDS:
                        line.measure(seconds < min(WARM_UP_SECONDS, 20 * minutes))
                measured = seconds if seconds >= measured + MEASURE_SECONDS else measured
                if seconds // 60 > told:
                    told = seconds // 60
                    tell(told, lines, engine)
                    engine.next()
                if any(line.wrong for line in lines) or engine.wrong:
                    break
            for line in lines:
                line.end()
            engine.end()
        finally:
            for line in lines:
                line.kill()
        wrong = [what for line in lines for what in line.wrong] + engine.wrong
        wrong += [f"{line.name}: no value was checked" for line in lines if not line.checked]
        for line in lines if wrong else []:
            line.log.seek(0)
            print(f"--- {line.name}: the last words of both programs\n" + "".join(line.log.readlines()[-20:]), end="")
        print("".join(what + "\n" for what in wrong[:20]) +
              f"{(time.time() - started) / 60:.1f} minutes, {sum(line.checked for line in lines)} values checked, "
              f"{engine.exchanges} exchanges in virtual time: " +
              (f"{len(wrong)} WRONG" if wrong else "nothing wrong"))
        return 1 if wrong else 0


def tell(minute, lines, engine):
    print(f"minute {minute}, {engine.exchanges} exchanges in virtual time\n"
          "line      requests  retries answered noanswer  damaged  refused     late  foreign   echoes  "
          "writes done/refused/failed/not sure  reads the same  values checked  wrong  "
          "simulate KiB/files  monitor KiB/files")
    for line in lines:
        print(line.row())
    sys.stdout.flush()


def main():
    os.chdir(os.path.join(os.path.dirname(os.path.realpath(__file__)), "../.."))
    minutes = sys.argv[1] if len(sys.argv) > 1 else "30"
    if len(sys.argv) > 2 or not minutes.isdigit() or int(minutes) < 1:
        print(__doc__.split("\n\n")[1], file=sys.stderr)
        return 2
    return run(int(minutes))


if __name__ == "__main__":
    sys.exit(main())
