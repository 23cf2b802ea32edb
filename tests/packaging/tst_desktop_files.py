"""The files for desktops are valid, agree with each other, and offer what is taken."""

import ast
import os
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from commands import PROJECT, accepted_extensions
from desktop_files import (DATABASE, LANGUAGES, LINUX, WITHOUT_TYPE, accepted_types, group_of, listed,
                           mime_database)

ENTRY = LINUX / "applications/quorlin.desktop"
OPEN_ENTRY = LINUX / "applications/zz-quorlin-open.desktop"
METAINFO = LINUX / "metainfo/example.varnex.quorlin.metainfo.xml"
NAUTILUS = LINUX / "nautilus/quorlin_nautilus.py"
FOLDER = "inode/directory"
VERBS = {"convert": "/p", "add": "/a"}
LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"


def needs(*programs):
    missing = [program for program in programs if not shutil.which(program)]
    return unittest.skipIf(missing, f"not installed: {', '.join(missing)}")


def service_menu(verb):
    return LINUX / f"kio/quorlin-{verb}.desktop"


def nemo_action(verb):
    return LINUX / f"nemo/quorlin-{verb}.nemo_action"


def send_to(verb):
    return LINUX / f"thunar/quorlin-{verb}.desktop"


def constant(name):
    """The value of a constant of the extension of Nautilus."""
    for statement in ast.parse(NAUTILUS.read_text(encoding="utf-8")).body:
        if isinstance(statement, ast.Assign) and statement.targets[0].id == name:
            return eval(compile(ast.Expression(statement.value), NAUTILUS, "eval"))
    raise AssertionError(f"{NAUTILUS} has no {name}")


@unittest.skipUnless(DATABASE.exists(), "shared-mime-info is not installed")
class Types(unittest.TestCase):
    def test_every_extension_has_a_type_that_the_system_knows(self):
        for extension in accepted_extensions() - WITHOUT_TYPE:
            self.assertTrue(mime_database().of_extension(extension), extension)

    def test_thunar_and_dolphin_offer_all_types_and_folders_only_to_be_added(self):
        for place in (send_to, service_menu):
            for verb, more in (("convert", set()), ("add", {FOLDER})):
                with self.subTest(place(verb)):
                    self.assertEqual(listed(group_of(place(verb))["MimeType"]),
                                     accepted_types() | more)

    def test_the_description_names_all_types(self):
        named = [element.text for element in ElementTree.parse(METAINFO).iter("mediatype")]
        self.assertEqual(sorted(named), sorted(accepted_types()))

    # Desktops prefer a program for just that type to an editor of all text.
    def test_open_with_has_all_types_that_do_not_count_as_text(self):
        texts = {name for name in accepted_types()
                 if "text/plain" in mime_database().ancestors(name) | {name}}
        self.assertLess({"text/csv", "image/svg+xml", "text/plain"}, texts)
        self.assertEqual(listed(group_of(OPEN_ENTRY)["MimeType"]), accepted_types() - texts)

    def test_dolphin_offers_nothing_for_what_is_only_built_on_a_taken_type(self):
        database, taken = mime_database(), accepted_types()
        # A type that taken ones are built on cannot be left out without them.
        needed = set().union(*map(database.ancestors, taken))
        foreign = {name for name in database.parents if database.ancestors(name) & taken} - taken
        for verb in VERBS:
            excluded = listed(group_of(service_menu(verb))["ExcludeServiceTypes"], ",")
            hidden = {name for name in database.parents
                      if (database.ancestors(name) | {name}) & excluded}
            self.assertEqual(foreign - needed - hidden, set())
            self.assertEqual(taken & hidden, set())


class Extensions(unittest.TestCase):
    # Nemo compares the ends of names: without its point, "ps" would be found in "backups".
    def test_nemo_offers_all_extensions_with_their_point(self):
        points = {f".{extension}" for extension in accepted_extensions()}
        for verb, more in (("convert", set()), ("add", {"dir"})):
            self.assertEqual(listed(group_of(nemo_action(verb), "Nemo Action")["Extensions"]),
                             points | more)

    def test_nautilus_offers_all_extensions(self):
        self.assertEqual(constant("EXTENSIONS"), accepted_extensions())


class Entries(unittest.TestCase):
    def test_each_starts_the_program_with_its_verb(self):
        for verb, option in VERBS.items():
            action = group_of(service_menu(verb), f"Desktop Action {verb}")
            self.assertEqual(group_of(service_menu(verb))["Actions"], f"{verb};")
            self.assertEqual(action["Exec"], f"quorlin {option} %F")
            self.assertEqual(group_of(send_to(verb))["Exec"], f"quorlin {option} %F")
            nemo = group_of(nemo_action(verb), "Nemo Action")
            self.assertEqual((nemo["Exec"], nemo["Quote"]), (f"quorlin {option} %U", "double"))

    def test_they_are_offered_for_local_files_only(self):
        for verb in VERBS:
            self.assertEqual(group_of(service_menu(verb))["X-KDE-Protocols"], "file")
            self.assertEqual(group_of(nemo_action(verb), "Nemo Action")["UriScheme"], "file")

    def test_file_managers_say_the_same_in_every_language(self):
        for verb in VERBS:
            texts = constant(verb.upper())
            expected = [texts[language.strip("[]") or "en"] for language in LANGUAGES]
            for group in (group_of(service_menu(verb), f"Desktop Action {verb}"),
                          group_of(nemo_action(verb), "Nemo Action"), group_of(send_to(verb))):
                self.assertEqual([group[f"Name{language}"] for language in LANGUAGES], expected)

    def test_all_show_the_programs_icon(self):
        groups = [group_of(ENTRY), group_of(OPEN_ENTRY)]
        for verb in VERBS:
            groups += [group_of(send_to(verb)), group_of(service_menu(verb), f"Desktop Action {verb}")]
            self.assertEqual(group_of(nemo_action(verb), "Nemo Action")["Icon-Name"], "quorlin")
        self.assertEqual({group["Icon"] for group in groups}, {"quorlin"})

    def test_the_programs_entry_speaks_every_language(self):
        entry = group_of(ENTRY)
        for key in ("GenericName", "Comment", "Keywords"):
            self.assertEqual(len({entry[f"{key}{language}"] for language in LANGUAGES}), 3, key)
        self.assertEqual(entry["Name"], "Quorlin")

    @needs("desktop-file-validate")
    def test_they_are_valid(self):
        for path in (ENTRY, OPEN_ENTRY, *map(send_to, VERBS)):
            done = subprocess.run(["desktop-file-validate", path], capture_output=True, text=True,
                                  check=False)
            self.assertEqual((done.returncode, done.stdout + done.stderr), (0, ""), path)


@needs("update-desktop-database", "xdg-mime", "gio")
class DefaultProgram(unittest.TestCase):
    """Which program opens a document while the user has preferred none."""

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.applications = self.folder / "share/applications"
        self.applications.mkdir(parents=True)
        (self.folder / "share/mime").symlink_to("/usr/share/mime")
        for path in (ENTRY, OPEN_ENTRY):
            # A program that is not there is never chosen.
            text = path.read_text(encoding="utf-8").replace("Exec=quorlin", "Exec=true")
            (self.applications / path.name).write_text(text, encoding="utf-8")

    def install(self, name, types):
        (self.applications / name).write_text(
            f"[Desktop Entry]\nType=Application\nName={name}\nExec=true %F\nMimeType={types};\n",
            encoding="utf-8")

    def output_of(self, *command):
        names = {**os.environ, "HOME": str(self.folder), "XDG_DATA_DIRS": f"{self.folder}/share",
                 "XDG_DATA_HOME": f"{self.folder}/data", "XDG_CONFIG_HOME": f"{self.folder}/config",
                 "XDG_CONFIG_DIRS": f"{self.folder}/none", "LC_ALL": "C.UTF-8"}
        names.pop("XDG_CURRENT_DESKTOP", None)
        return subprocess.run(command, env=names, capture_output=True, text=True, check=True).stdout

    def defaults_for(self, name):
        """What the toolkits choose, and what scripts do, who do not know that tables are text."""
        self.output_of("update-desktop-database", self.applications)
        first = self.output_of("gio", "mime", name).splitlines()[0]
        return first.split()[-1], self.output_of("xdg-mime", "query", "default", name).strip()

    def test_any_other_program_comes_first(self):
        for program in ("org.gnome.Evince.desktop", "xpdf.desktop", "zathura.desktop"):
            with self.subTest(program):
                self.install(program, "application/pdf")
                self.assertEqual(self.defaults_for("application/pdf"), (program, program))
                (self.applications / program).unlink()

    def test_an_editor_of_text_goes_before_it(self):
        self.install("vim.desktop", "text/plain")
        for name in ("text/plain", "text/csv", "text/html", "application/rtf", "image/svg+xml"):
            chosen, for_scripts = self.defaults_for(name)
            self.assertEqual(chosen, "vim.desktop", name)
            self.assertIn(for_scripts, ("vim.desktop", ""), name)

    def test_it_opens_what_no_other_program_opens(self):
        self.assertEqual(self.defaults_for("application/pdf"), (OPEN_ENTRY.name,) * 2)

    def test_the_entry_of_the_menu_opens_nothing_by_itself(self):
        self.assertNotIn("MimeType", group_of(ENTRY))
        self.assertEqual(group_of(OPEN_ENTRY)["NoDisplay"], "true")
        self.assertEqual(group_of(OPEN_ENTRY)["InitialPreference"], "0")
        self.assertNotIn(FOLDER, group_of(OPEN_ENTRY)["MimeType"])


class Description(unittest.TestCase):
    def setUp(self):
        self.root = ElementTree.parse(METAINFO).getroot()

    def test_it_belongs_to_the_programs_entry(self):
        self.assertEqual(self.root.findtext("launchable"), ENTRY.name)
        self.assertEqual(METAINFO.name, f"{self.root.findtext('id')}.metainfo.xml")

    def test_its_newest_release_is_the_projects_version(self):
        project = (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
        version = re.search(r"project\(Quorlin VERSION ([\d.]+)", project)[1]
        self.assertEqual(self.root.find("releases/release").get("version"), version)

    def test_every_text_is_there_in_every_language(self):
        for parent in self.root.iter():
            for tag in {child.tag for child in parent} & {"summary", "p", "li", "caption"}:
                languages = [child.get(LANGUAGE) for child in parent.iterfind(tag)]
                self.assertEqual({languages.count(name) for name in (None, "de", "fr")},
                                 {len(languages) // 3}, (parent.tag, tag))

    @unittest.skipUnless((PROJECT / "docs/pictures").is_dir(), "docs/pictures has not been made")
    def test_the_pictures_are_those_of_the_guides(self):
        for image in self.root.iter("image"):
            name = image.text.rpartition("/")[2]
            self.assertTrue((PROJECT / "docs/pictures" / name).is_file(), name)

    @needs("appstreamcli")
    def test_it_is_valid(self):
        done = subprocess.run(["appstreamcli", "validate", "--no-net", "--pedantic", METAINFO],
                              env={**os.environ, "LC_ALL": "C.UTF-8"}, capture_output=True, text=True,
                              check=False)
        self.assertEqual(done.returncode, 0, done.stdout)
        # The domain is one of those that are kept for examples, which the validator does not know.
        self.assertEqual(re.findall(r"^[EWIP]: \S+ (\S+)", done.stdout, re.M), ["cid-maybe-not-rdns"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
