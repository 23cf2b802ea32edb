"""The completions know the options of the programs, what is installed and what is taken."""

import os
import pty
import re
import select
import shlex
import shutil
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from commands import COMPLETED, PROJECT, accepted_extensions, environment, options_of

FOLDER = PROJECT / "packaging/linux/completion"
BASH_COMPLETION = Path("/usr/share/bash-completion/bash_completion")
SETTINGS = ["Language", "MergeOption", "Position", "Quality", "ShowOption", "Skin"]
MACHINE_SETTINGS = ["Language", "Quality", "Skin"]
QUALITIES = ["Default", "High", "Low", "Medium"]
LANGUAGES = ["deutsch", "english", "français"]
SKINS = ["Clarity", "Nightfall", "Varnex"]


class Completion(unittest.TestCase):
    """A folder with documents, as the current one of every shell."""

    def setUp(self):
        scene = Path(tempfile.mkdtemp()).resolve()
        self.addCleanup(shutil.rmtree, scene)
        self.folder, self.home = scene / "documents", scene / "home"
        self.folder.mkdir()
        self.home.mkdir()
        for name in ("letter.docx", "Scan.PDF", "notes.md", "list.json"):
            (self.folder / name).touch()
        (self.folder / "minutes").mkdir()

    def output_of(self, *command):
        done = subprocess.run(command, cwd=self.folder, env=environment(self.home),
                              capture_output=True, text=True, check=False, timeout=120)
        self.assertEqual(done.stderr, "")
        return done.stdout


@unittest.skipUnless(BASH_COMPLETION.exists(), "bash-completion is not installed")
class Bash(Completion):
    SCRIPT = """
        source "$1"; source "$2"; COMP_LINE=$3; shift 3
        COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMP_POINT=${#COMP_LINE}
        COMP_TYPE=9; COMP_KEY=9
        spec=$(complete -p "$1") || exit 1
        spec=${spec##*-F }
        "${spec%% *}" "$1" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD-1]}" 2>"$HOME/errors"
        grep -v 'compopt: not currently executing' "$HOME/errors" >&2
        printf '%s\\n' "${COMPREPLY[@]}"
    """

    def complete(self, *words):
        script = FOLDER / "bash" / words[0]
        line = " ".join(words).replace(" = ", "=")
        output = self.output_of("bash", "-c", self.SCRIPT, "bash", str(BASH_COMPLETION), str(script), line, *words)
        return sorted(line for line in output.split("\n") if line)

    def test_options_are_those_of_the_help(self):
        for command in COMPLETED:
            with self.subTest(command=command):
                self.assertEqual(set(self.complete(command, "-")), options_of(command))

    def test_documents_are_those_that_are_taken_and_folders(self):
        self.assertEqual(self.complete("quorlin-convert", ""), ["Scan.PDF", "letter.docx", "minutes"])

    def test_every_extension_that_is_taken_is_known(self):
        for name in ("letter.docx", "Scan.PDF", "notes.md", "list.json"):
            (self.folder / name).unlink()
        names = {f"x.{extension}" for extension in accepted_extensions()}
        for name in names | {"x.md", "x.zip", "x.exe"}:
            (self.folder / name).touch()
        self.assertEqual(set(self.complete("quorlin-convert", "")), names | {"minutes"})

    def test_values_of_options_are_known(self):
        cases = {("-q", ""): QUALITIES, ("--quality", "H"): ["High"], ("-o", ""): ["minutes"],
                 ("--quality", "=", "L"): ["Low"], ("--json", ""): ["list.json", "minutes"],
                 ("--merge", ""): ["Scan.PDF", "minutes"], ("--timeout", ""): [],
                 ("-T", ""): ["Scan.PDF", "letter.docx", "list.json", "minutes", "notes.md"]}
        for words, expected in cases.items():
            with self.subTest(words=words):
                self.assertEqual(self.complete("quorlin-convert", *words), expected)

    def test_the_settings_are_completed_step_by_step(self):
        cases = {("",): ["get", "list", "remove", "set", "values"], ("get", ""): SETTINGS,
                 ("--machine", "set", ""): MACHINE_SETTINGS,
                 ("remove", "--machine", ""): MACHINE_SETTINGS, ("remove", ""): SETTINGS,
                 ("list", ""): [], ("get", "Skin", ""): [],
                 ("set", "Language", ""): LANGUAGES, ("set", "Skin", "N"): ["Nightfall"],
                 ("set", "--machine", "Quality", ""): QUALITIES,
                 ("set", "ShowOption", ""): ["false", "true"]}
        for words, expected in cases.items():
            with self.subTest(words=words):
                self.assertEqual(self.complete("quorlin-settings", *words), expected)

    def test_skins_and_languages_are_those_that_are_installed(self):
        self.assertEqual(self.complete("quorlin-skin", ""), SKINS)
        self.assertEqual(self.complete("quorlin-skin", "--language", "fr"), ["français"])
        self.assertEqual(self.complete("quorlin-skin", "--folder", ""), ["minutes"])

    def test_a_name_is_never_run(self):
        """Names of skins come from a folder, and whoever may write there must not get more."""
        programs = self.home / "programs"
        programs.mkdir()
        settings = programs / "quorlin-settings"
        settings.write_text("#!/bin/sh\necho 'A $(touch ran)'\n", encoding="utf-8")
        settings.chmod(0o755)
        self.SCRIPT = f"PATH={shlex.quote(str(programs))}:$PATH; hash -r;" + Bash.SCRIPT
        self.assertEqual(self.complete("quorlin-skin", ""), ["A\\ \\$\\(touch\\ ran\\)"])
        self.assertFalse((self.folder / "ran").exists())


class Fish(Completion):
    def test_the_files_name_the_options_of_the_help(self):
        for command in COMPLETED:
            with self.subTest(command=command):
                text = (FOLDER / f"fish/{command}.fish").read_text(encoding="utf-8")
                told = {"-" + name for name in re.findall(r" -s (\S+)", text)}
                told |= {"--" + name for name in re.findall(r" -l ([a-z-]{3,})", text)
                         if f"set -l {name} " not in text}
                self.assertEqual(told, options_of(command))

    @unittest.skipUnless(shutil.which("fish"), "there is no fish")
    def test_the_shell_completes(self):
        cases = {"quorlin-convert -q ": QUALITIES, "quorlin-convert -o ": ["minutes/"],
                 "quorlin-convert ": ["Scan.PDF", "letter.docx", "minutes/"],
                 "quorlin-convert --merge=": ["--merge=Scan.PDF", "--merge=minutes/"],
                 "quorlin-convert --quality=H": ["--quality=High"],
                 "quorlin-settings set Language ": LANGUAGES,
                 "quorlin-settings --machine get ": MACHINE_SETTINGS,
                 "quorlin-settings remove --machine ": MACHINE_SETTINGS,
                 "quorlin-settings set ": SETTINGS,
                 "quorlin-settings ": ["get", "list", "remove", "set", "values"],
                 "quorlin-skin ": SKINS, "quorlin-skin --language d": ["deutsch"]}
        for line, expected in cases.items():
            with self.subTest(line=line):
                self.assertEqual(self.complete(line), expected)

    def complete(self, line):
        command = line.split()[0]
        script = f"source {shlex.quote(str(FOLDER / 'fish' / command))}.fish; complete -C {shlex.quote(line)}"
        found = [entry.split("\t")[0] for entry in self.output_of("fish", "--no-config", "-c", script).splitlines()]
        return sorted(found)


class Zsh(Completion):
    def test_the_files_name_the_options_of_the_help(self):
        for command in COMPLETED:
            with self.subTest(command=command):
                text = (FOLDER / f"zsh/_{command}").read_text(encoding="utf-8")
                body = text[text.index("_arguments"):text.index("&& return 0")]
                specifications = [line.split("[")[0] for line in body.splitlines()[1:] if "[" in line]
                told = {word for part in specifications for word in re.findall(r"(?<![\w-])-{1,2}\w[\w-]*", part)}
                self.assertEqual(told, options_of(command))

    @unittest.skipUnless(shutil.which("zsh"), "there is no zsh")
    def test_the_shell_completes(self):
        cases = {"quorlin-convert -q ": QUALITIES, "quorlin-convert ": ["Scan.PDF", "letter.docx", "minutes"],
                 "quorlin-convert --output=": ["minutes"], "quorlin-convert --timeout ": [],
                 "quorlin-convert --merge ": ["Scan.PDF", "minutes"],
                 "quorlin-settings ": ["get", "list", "remove", "set", "values"],
                 "quorlin-settings --machine set ": MACHINE_SETTINGS,
                 "quorlin-settings remove --machine ": MACHINE_SETTINGS,
                 "quorlin-settings set ": SETTINGS, "quorlin-settings set Skin ": SKINS,
                 "quorlin-settings get Skin ": [], "quorlin-skin --language=": LANGUAGES,
                 "quorlin-skin ": SKINS}
        for line, expected in cases.items():
            with self.subTest(line=line):
                self.assertEqual(self.complete(line), expected)

    @unittest.skipUnless(shutil.which("zsh"), "there is no zsh")
    def test_the_shell_knows_every_option(self):
        for command in COMPLETED:
            with self.subTest(command=command):
                self.assertEqual(set(self.complete(f"{command} -")), options_of(command))

    # Keeps what is offered: a list is not shown while more is typed.
    KEEPING = """
        compadd() {
            if [[ " $* " != *\ -[OAD]\ * ]]; then
                local -a __matches
                builtin compadd -A __matches "$@"
                print -rl -- $__matches >>$HOME/offered
            fi
            builtin compadd "$@"
        }
    """

    def complete(self, line):
        """What the shell offers at Tab, on a terminal."""
        offered = self.home / "offered"
        offered.write_text("", encoding="utf-8")
        (self.home / "keeping").write_text(self.KEEPING, encoding="utf-8")
        pid, terminal = pty.fork()
        if pid == 0:
            os.chdir(self.folder)
            os.execvpe("zsh", ["zsh", "-f", "-i"], environment(self.home) | {"TERM": "dumb"})
        try:
            self.say(terminal, f"fpath=({shlex.quote(str(FOLDER / 'zsh'))} $fpath); autoload -U compinit; "
                               f"compinit -u -D; source ~/keeping; "
                               f"bindkey -e; zstyle ':completion:*' insert-tab false; print re''ady\n", "ready")
            # The shell takes what follows when it has completed: give the line up, and tell. By
            # default it takes a Tab with more behind it for text.
            self.say(terminal, f"{line}\t\x07print do''ne\n", "done")
        finally:
            os.close(terminal)
            os.waitpid(pid, 0)
        return sorted({word.rstrip("=") for word in offered.read_text(encoding="utf-8").split()})

    def say(self, terminal, line, answer):
        os.write(terminal, line.encode())
        self.read_until(terminal, answer)

    def read_until(self, terminal, word):
        """What is shown up to a line with just this word."""
        text, deadline = "", time.monotonic() + 60
        while not re.search(rf"^{word}\r?$", text, re.M):
            if time.monotonic() > deadline or not select.select([terminal], [], [], 60)[0]:
                self.fail(f"nothing came but {text!r}")
            text += os.read(terminal, 65536).decode("utf-8", "replace")
        return text


if __name__ == "__main__":
    unittest.main()
