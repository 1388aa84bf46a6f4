# SPDX-License-Identifier: MIT
# Compiles one changed source as the build does and links it into a test program. The build folder has the objects and
# libraries of the unchanged tree: the changed object goes to the linker in the place of its own, or before the library
# that holds it, whose member is then not asked for. Neither the tree nor those objects are written to.
import json
import os
import shlex
import shutil
import subprocess


class Build:
    """What the build folder `folder` knows of how sources are compiled and programs linked."""

    def __init__(self, folder, root):
        self.folder = folder
        self.root = root
        self.scratch = os.path.join(folder, f"mutant-{os.getpid()}")  # of this run alone
        with open(os.path.join(folder, "compile_commands.json")) as file:
            commands = json.load(file)
        self.commands = {}
        for entry in commands:  # of a source that two programs compile, the first is as good as any
            self.commands.setdefault(os.path.relpath(entry["file"], root), shlex.split(entry["command"]))
        self.links = {}
        self.linked = set()

    def compile(self, source, text, options=()):
        """The object that `text`, in the place of `source`, becomes, as its path; null where it isn't C++. `options` come
        after those of the build."""
        place = os.path.join(self.scratch, source)
        os.makedirs(os.path.dirname(place), exist_ok=True)
        with open(place, "w") as file:
            file.write(text)
        command = list(self.commands[source])
        while "ccache" in os.path.basename(command[0]):
            command.pop(0)
        result = place + ".o"
        command[command.index("-o") + 1] = result
        command[command.index("-c") + 1] = place
        command += ["-w", "-iquote", os.path.dirname(os.path.join(self.root, source)), *options]
        return result if self.run(command) else None

    def link(self, program, source, changed, options=()):
        """The path of the test program `program` with the object `changed` for that of `source`; null on failure. It lies
        beside the unchanged one. `options` come after those of the build."""
        if program not in self.links:
            steps = subprocess.run(["ninja", "-C", self.folder, "-t", "commands", program], check=True,
                                   capture_output=True, text=True).stdout.splitlines()
            step = next(part for part in steps[-1].split("&&") if " -o " in part)
            self.links[program] = shlex.split(step)
        command = list(self.links[program])
        output = command.index("-o") + 1
        command[output] += f".mutant-{os.getpid()}"
        own = self.object_of(source)
        if own in command:
            command[command.index(own)] = changed
        else:
            command.insert(output + 1, changed)
        command += options
        linked = os.path.join(self.folder, command[output])
        self.linked.add(linked)
        return linked if self.run(command) else None

    def clean(self):
        shutil.rmtree(self.scratch, ignore_errors=True)
        for program in self.linked:
            if os.path.exists(program):
                os.remove(program)

    def object_of(self, source):
        command = self.commands[source]
        return command[command.index("-o") + 1]

    def run(self, command):
        return subprocess.run(command, cwd=self.folder, capture_output=True).returncode == 0
