"""The man pages are well-formed, and tell the options that the programs have."""

import os
import re
import shutil
import subprocess
import unittest

from commands import COMPLETED, PROJECT, help_of, options_of

FOLDER = PROJECT / "packaging/linux/man"
PAGES = sorted(FOLDER.glob("*.[1-8]"))
COMMAND_PAGES = [page for page in PAGES if page.suffix == ".1"]
# The toolkit or the C library reads these for the program.
READ_ELSEWHERE = {"PATH", "TMPDIR", "XDG_CACHE_HOME", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR"}


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, check=False, timeout=60,
                          env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80"})


def needs(program):
    return unittest.skipUnless(shutil.which(program), f"there is no {program}")


def text_of(page):
    return page.read_text(encoding="utf-8")


def examples_of(source):
    """The lines of the commands among the examples, as they shall be shown."""
    part = source[source.index("\n.Sh EXAMPLES\n"):source.index("\n.Sh SEE ALSO\n")]
    blocks = re.findall(r"^\.Bd [^\n]*\n(.*?)^\.Ed$", part, re.M | re.S)
    lines = re.findall(r"^\.Dl (.*)$", part, re.M) + "".join(blocks).splitlines()
    return [" ".join(line.replace(r"\&", "").replace(r"\e", "\\").split()) for line in lines]


class ManPages(unittest.TestCase):
    def each(self, check, pages=None):
        for page in pages or PAGES:
            with self.subTest(page=page.name):
                check(page)

    def test_every_command_has_a_page(self):
        install = (PROJECT / "cmake/QuorlinInstall.cmake").read_text(encoding="utf-8")
        commands = re.search(r"set\(commands ([^)]*)\)", install)[1].split()
        self.assertEqual({page.stem for page in COMMAND_PAGES}, set(commands))

    @needs("man")
    def test_it_is_set_without_warnings(self):
        def check(page):
            done = run("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", str(page))
            self.assertEqual((done.returncode, done.stderr), (0, ""))

        self.each(check)

    @needs("man")
    def test_no_line_is_wider_than_the_terminal(self):
        def check(page):
            lines = run("man", "-l", str(page)).stdout.splitlines()
            self.assertGreater(len(lines), 20)
            self.assertEqual([line for line in lines if len(line) > 80], [])

        self.each(check)

    @needs("man")
    def test_examples_show_the_words_of_their_source(self):
        """The macros take a lone sign of punctuation for their own, and join it to its neighbour."""
        def check(page):
            source, shown = examples_of(text_of(page)), run("man", "-l", str(page)).stdout
            lines = [" ".join(line.split()) for line in shown.splitlines()]
            self.assertGreater(len(source), 0)
            self.assertEqual([line for line in source if line not in lines], [])

        self.each(check, COMMAND_PAGES)

    @needs("mandoc")
    def test_the_other_formatter_finds_nothing_either(self):
        def check(page):
            done = run("mandoc", "-Tlint", "-Wstyle", str(page))
            # Which other pages the machine has does not count.
            found = [line for line in done.stdout.splitlines() if "referenced manual not found" not in line]
            self.assertEqual(found, [])

        self.each(check)

    @needs("lexgrog")
    def test_its_name_and_what_it_is_are_found(self):
        def check(page):
            self.assertRegex(run("lexgrog", str(page)).stdout, f'"{re.escape(page.stem)} - \\w')

        self.each(check)

    def test_it_has_the_usual_sections(self):
        def check(page):
            sections = re.findall(r"^\.Sh (.*)$", text_of(page), re.M)
            self.assertEqual(sections, ["NAME", "SYNOPSIS", "DESCRIPTION", "ENVIRONMENT", "FILES",
                                        "EXIT STATUS", "EXAMPLES", "SEE ALSO"])

        self.each(check, COMMAND_PAGES)

    def test_it_refers_to_pages_that_are_there(self):
        names = {(page.stem, page.suffix[1:]) for page in PAGES}
        def check(page):
            references = set(re.findall(r"^\.Xr (\S+) (\d)", text_of(page), re.M))
            self.assertEqual(references - names, set())

        self.each(check)

    def test_it_tells_the_options_of_the_help_and_no_others(self):
        for command in COMPLETED:
            with self.subTest(command=command):
                page = text_of(FOLDER / f"{command}.1")
                described = page[page.index("The options are:"):]
                items = re.findall(r"^\.It (Fl .*)$", described, re.M)
                told = {"-" + name for item in items for name in re.findall(r"Fl (\S+)", item)}
                self.assertEqual(told, options_of(command))

    def test_it_tells_the_arguments_of_options_as_the_help_does(self):
        page = text_of(FOLDER / "quorlin-convert.1")
        items = re.findall(r"^\.It .*Fl -(\S+) Ar (\S+)$", page, re.M)
        self.assertGreater(len(items), 5)
        for option, argument in items:
            self.assertIn(f"--{option} {argument} ", help_of("quorlin-convert"))

    def test_the_environment_that_it_tells_is_read(self):
        sources = "".join(path.read_text(encoding="utf-8") for path in (PROJECT / "src").rglob("*.cpp"))
        def check(page):
            names = set(re.findall(r"Ev (\w+)", text_of(page)))
            unknown = {name for name in names - READ_ELSEWHERE if f'"{name}"' not in sources}
            self.assertEqual(unknown, set())

        self.each(check, COMMAND_PAGES)


if __name__ == "__main__":
    unittest.main()
