#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Changes sources one small thing at a time and tells which changes the tests don't notice. run.sh builds what it needs and
# starts it; README.md says how a table is read.
import argparse
import filecmp
import os
import random
import resource
import signal
import subprocess
import sys
from collections import Counter

from build import Build
from find_mutations import find_mutations
from suites import filter_for, programs_of

MEMORY = 4 << 30  # bytes; a change can make a loop that only ends with the memory
OPTIMISED = ("-O2",)
SANITIZED = ("-fsanitize=address,undefined", "-fno-sanitize-recover=all")
COLUMNS = "file\tline\tmutation\toutcome\tchanged line"
SURVIVED, SAME_OBJECT, SAME_BEHAVIOUR, NOT_COMPILED = "survived", "same object code", "same behaviour", "not compiled"


class Mutant:
    """A mutation of a file, and what the line then reads."""

    def __init__(self, file, source, mutation):
        self.file = file
        self.text = mutation.apply(source)
        self.line = mutation.line
        self.kind = mutation.kind
        self.words = mutation.words
        shown = source if mutation.kind == "left out" else self.text
        self.changed_line = " ".join(shown.split("\n")[mutation.line - 1].split())

    def key(self):
        return self.file, self.words, self.changed_line


def sources_in(paths, build):
    """The sources that `paths` name, each with the line that is meant, or null for all; sorted."""
    named = {}
    for path in paths:
        path, _, line = path.partition(":")
        path = os.path.relpath(path)
        if not os.path.exists(path):
            sys.exit(f"There is no {path}.")
        found = [source for source in build.commands
                 if (source == path or source.startswith(path.rstrip("/") + "/")) and programs_of(source)]
        if not found:
            sys.exit(f"No test runs {path}.")
        named.update((source, int(line) if line else None) for source in found)
    return sorted(named.items())


def mutants_of(file, line):
    with open(file, newline="") as handle:
        source = handle.read()
    found = (Mutant(file, source, mutation) for mutation in find_mutations(source))
    return [mutant for mutant in found if line is None or mutant.line == line]


def in_turns(mutants, chance):
    """In random order, but the kinds of change take turns: there are many more constants than conditions."""
    by_kind = {}
    for mutant in mutants:
        by_kind.setdefault(mutant.kind, []).append(mutant)
    for group in by_kind.values():
        chance.shuffle(group)
    turns = [(position, kind, mutant) for kind, group in by_kind.items() for position, mutant in enumerate(group)]
    return [mutant for _, _, mutant in sorted(turns, key=lambda turn: turn[:2])]


def choose(sources, count, seed):
    """`count` mutants, or all there are: each file in proportion to how many it has, but at least one."""
    places = []
    for file, line in sources:
        chance = random.Random(f"{seed} {file}")
        mutants = in_turns(mutants_of(file, line), chance)
        start = chance.random()
        places += [((position + start) / len(mutants) if position else 0, file, position, mutant)
                   for position, mutant in enumerate(mutants)]
    chosen = sorted(places, key=lambda place: place[:3])[: count or None]
    return [mutant for _, _, _, mutant in sorted(chosen, key=lambda place: (place[1], place[3].line, place[2]))]


def environment_of(build):
    user = os.path.join(build.folder, "user")
    folder = os.path.join(build.folder, "tmp")
    for path in (user, folder):
        os.makedirs(path, exist_ok=True)
    return {**os.environ, "LOCPATH": os.path.join(build.folder, "locales"), "XDG_CONFIG_HOME": user, "HOME": user,
            "TMPDIR": folder}


def run_tests(build, program, tests, seconds, memory=MEMORY):
    """Why the tests of `program` failed, or null when they passed. They may work for `seconds`, whatever else the machine
    does, and wait for some times as long."""
    command = [program, "--gtest_fail_fast", "--gtest_color=no"] + ([f"--gtest_filter={tests}"] if tests else [])

    def limit():
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
        if memory:
            resource.setrlimit(resource.RLIMIT_AS, (memory, memory))

    process = subprocess.Popen(command, cwd=build.folder, env=environment_of(build), stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, errors="replace",
                               start_new_session=True, preexec_fn=limit)
    is_late = False
    try:
        output = process.communicate(timeout=10 * seconds)[0]
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        output = process.communicate()[0]
        is_late = True
    if process.returncode == 0:
        return None
    begun = last_test(output, "[ RUN      ] ")
    if is_late or process.returncode in (-signal.SIGXCPU, -signal.SIGKILL):
        return f"time limit in {begun}"
    if "[  PASSED  ]" in output and "[  FAILED  ]" not in output:
        return "what is left over at the end"
    return last_test(output, "[  FAILED  ] ") or f"crash in {begun}"


def last_test(output, mark):
    """The first failed test, or the last that began."""
    names = [line[len(mark):].split(",")[0].split(" (")[0] for line in output.splitlines() if line.startswith(mark)]
    if not names:
        return ""
    return names[0] if "FAILED" in mark else names[-1]


class Judge:
    """Finds out what the tests make of a mutant."""

    def __init__(self, build, known):
        self.build = build
        self.known = known
        self.unchanged = {}
        self.seconds = {}

    def of(self, mutant):
        compiled = self.build.compile(mutant.file, mutant.text)
        if not compiled:
            return NOT_COMPILED
        if self.is_unchanged(mutant, compiled, ()):
            return SAME_OBJECT
        first = filter_for(mutant.file, ".")
        for number, program in enumerate(programs_of(mutant.file)):
            self.limit(program)  # it is there, and passes
            linked = self.build.link(program, mutant.file, compiled)
            if not linked:
                return NOT_COMPILED
            for tests in [first, ""] if first and not number else [""]:
                killer = run_tests(self.build, linked, tests, self.limit(program, tests))
                if killer:
                    return f"killed by {killer}"
        if self.is_unchanged(mutant, self.build.compile(mutant.file, mutant.text, OPTIMISED), OPTIMISED):
            return SAME_OBJECT
        if mutant.key() in self.known:
            return SAME_BEHAVIOUR
        killer = self.under_sanitizers(mutant, first)
        return f"killed by the sanitizers: {killer}" if killer else SURVIVED

    def under_sanitizers(self, mutant, first):
        """What the nearest tests tell where the source alone is watched: a read beyond the end, a leak. The rest of the
        program isn't, so a fault that the unchanged source has as well is none."""
        with open(mutant.file, newline="") as handle:
            source = handle.read()
        program = programs_of(mutant.file)[0]
        killers = []
        for text in (source, mutant.text):
            compiled = self.build.compile(mutant.file, text, SANITIZED)
            linked = compiled and self.build.link(program, mutant.file, compiled, SANITIZED)
            killers.append(linked and run_tests(self.build, linked, first, 5 * self.limit(program, first), None))
        return killers[1] if linked and not killers[0] else None

    def is_unchanged(self, mutant, compiled, options):
        """Whether the compiler made the same of the mutant as of the source."""
        place = f"{os.path.join(self.build.scratch, mutant.file)}{''.join(options)}.unchanged"
        if place not in self.unchanged:
            os.rename(compiled, compiled + ".kept")
            with open(mutant.file, newline="") as handle:
                made = self.build.compile(mutant.file, handle.read(), options)
            if not made:
                sys.exit(f"{mutant.file} doesn't compile as it stands.")
            os.rename(made, place)
            os.rename(compiled + ".kept", compiled)
            self.unchanged[place] = True
        return filecmp.cmp(compiled, place, shallow=False)

    def limit(self, program, tests=""):
        """In seconds of work, what the tests may take: some times what they take with the unchanged program."""
        if (program, tests) not in self.seconds:
            path = next((os.path.join(folder, program) for folder, _, files in os.walk(self.build.folder)
                         if program in files), None)
            if not path:
                sys.exit(f"{program} isn't built.")
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            failure = run_tests(self.build, path, tests, 900)
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            if failure:
                sys.exit(f"{program} fails without a change: {failure}.")
            worked = after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime
            self.seconds[program, tests] = 3 + int(4 * worked)
        return self.seconds[program, tests]


def read_known(path):
    """The mutants that are told to behave as the source does: blocks of a file, a mutation, the line it leaves and a
    reason."""
    known = set()
    if not os.path.exists(path):
        return known
    with open(path) as file:
        blocks = [block.splitlines() for block in file.read().split("\n\n")]
    for block in blocks:
        lines = [line for line in block if not line.startswith("#")]
        if lines and len(lines) != 4:
            sys.exit(f"{path}: a block has four lines, not: {' / '.join(lines)}")
        if lines:
            known.add((lines[0], lines[1], " ".join(lines[2].split())))
    return known


def survivors_of(table, build):
    """The mutants that an earlier table, or several in one, tells to have survived."""
    with open(table) as file:
        rows = [line.rstrip("\n").split("\t") for line in file]
    wanted = {(row[0], row[2], row[4]) for row in rows if len(row) == 5 and row[3] == SURVIVED}
    files = sorted({file for file, _, _ in wanted if file in build.commands})
    return [mutant for file in files for mutant in mutants_of(file, None) if mutant.key() in wanted]


def summary(outcomes):
    killed = sum(number for outcome, number in outcomes.items() if outcome.startswith("killed"))
    changing = killed + outcomes[SURVIVED]
    share = f", {100 * killed / changing:.1f} % of those that change behaviour" if changing else ""
    rest = ", ".join(f"{outcomes[name]} {name}" for name in (SURVIVED, SAME_BEHAVIOUR, SAME_OBJECT, NOT_COMPILED))
    return f"{sum(outcomes.values())} mutants: {killed} killed{share}; {rest}"


def main():
    parser = argparse.ArgumentParser(prog="tests/mutants/run.sh", description="Changes sources one thing at a time and "
                                     "tells which changes the tests don't notice.")
    parser.add_argument("path", nargs="*", help="a source, a source:line or a folder")
    parser.add_argument("--count", type=int, default=0, help="how many mutants, spread over the files; all when left out")
    parser.add_argument("--seed", type=int, default=1, help="another seed chooses others (1)")
    parser.add_argument("--again", metavar="TABLE", help="those that survived in this table, instead of a path")
    parser.add_argument("--list", action="store_true", help="print the mutants without making them")
    parser.add_argument("--table", help="where the table goes (mutants.tsv in the build folder)")
    known = os.path.join(os.path.dirname(os.path.abspath(__file__)), "same-behaviour.txt")
    parser.add_argument("--known", default=known, help=argparse.SUPPRESS)
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    arguments = parser.parse_args()
    if bool(arguments.path) == bool(arguments.again):
        parser.error("name sources or folders, or --again with a table")
    build = Build(os.path.abspath(arguments.build), os.getcwd())
    if arguments.again:
        mutants = survivors_of(arguments.again, build)
    else:
        mutants = choose(sources_in(arguments.path, build), arguments.count, arguments.seed)
    if arguments.list:
        for mutant in mutants:
            print(f"{mutant.file}:{mutant.line}: {mutant.words}: {mutant.changed_line}")
        return 0
    judge = Judge(build, read_known(arguments.known))
    outcomes = Counter()
    table = arguments.table or os.path.join(build.folder, "mutants.tsv")
    with open(table + ".new", "w") as file:
        print(COLUMNS, file=file)
        for mutant in mutants:
            outcome = judge.of(mutant)
            outcomes[outcome.partition(" by ")[0]] += 1
            row = f"{mutant.file}\t{mutant.line}\t{mutant.words}\t{outcome}\t{mutant.changed_line}"
            print(row, file=file, flush=True)
            print(row.replace("\t", " | "), flush=True)
    os.replace(table + ".new", table)
    build.clean()
    print(summary(outcomes))
    return 1 if outcomes[SURVIVED] else 0


if __name__ == "__main__":
    sys.exit(main())
