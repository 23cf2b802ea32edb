"""The list of documents and the controls around it: by mouse, by menu, by keyboard and for a screen reader."""

import itertools
import shutil
import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.mainwindow import JOB_SECONDS, MainWindow  # noqa: E402
from harness.places import EXAMPLES  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

BUTTONS = ("To the top", "Up", "Down", "To the bottom")
MAIL, SHOW, MERGE = "Send result by e-mail", "Show result file", "Merge files"
# What a screen reader says of the window: buttons, options, captions, qualities, list and menus.
TEXTS = {
    "english": (("Help", "Minimise", "Close", *BUTTONS, "Convert"), (MAIL, SHOW, MERGE), "PDF quality",
                ("Default", "Low", "Medium", "High"), "Documents",
                ("Add…", "Open", "Remove", "Move", "Clear list"), ("Language", "Skin", "About Quorlin")),
    "deutsch": (("Hilfe", "Minimieren", "Schließen", "Ganz nach oben", "Nach oben", "Nach unten", "Ganz nach unten",
                 "Umwandeln"), ("Per E-Mail senden", "Ergebnis anzeigen", "Zusammenführen"), "PDF-Qualität",
                ("Standard", "Niedrig", "Mittel", "Hoch"), "Dokumente",
                ("Hinzufügen\N{NO-BREAK SPACE}…", "Öffnen", "Entfernen", "Verschieben", "Liste leeren"),
                ("Sprache", "Design", "Über Quorlin")),
    "français": (("Aide", "Réduire", "Fermer", "Tout en haut", "Vers le haut", "Vers le bas", "Tout en bas",
                  "Convertir"), ("Envoyer par e-mail", "Afficher le résultat", "Fusionner"), "Qualité du PDF",
                 ("Par défaut", "Faible", "Moyenne", "Élevée"), "Documents",
                 ("Ajouter…", "Ouvrir", "Retirer", "Déplacer", "Vider la liste"),
                 ("Langue", "Habillage", "À propos de Quorlin")),
}


class ListTest(WindowTest):
    def open(self, *names):
        """The window with these new documents in its list."""
        self.window = MainWindow(self, *self.make(*names))
        self.window.wait_for_documents(*names)
        return self.window

    def select(self, name):
        item = self.window.list.find("list item", name)
        self.window.program.click(item)
        item.wait_for("selected")

    def selected(self):
        return [item.name for item in self.window.list.find_all("list item") if item.is_selected]

    def choose_in_list_menu(self, *path, at=None):
        self.window.program.open_menu(self.window.list, at=at)
        self.window.program.choose_entry(*path)


class Dropping(ListTest):
    def test_files_and_folders_are_taken_in_order_and_only_what_can_be_converted(self):
        files = self.make("b.txt", "a.txt", "tool.exe", "box/page 10.txt", "box/page 2.txt", "box/inner/page 1.txt")
        (self.desktop.home / "empty.txt").touch()
        window = MainWindow(self)
        window.drop(*files[:3], self.desktop.home / "empty.txt", self.desktop.home / "box", files[0])
        window.wait_for_documents("b.txt", "a.txt", "page 2.txt", "page 10.txt", "page 1.txt", "b.txt")

    def test_what_is_no_file_is_refused(self):
        window = MainWindow(self)
        for what in (["--text", "no file at all.txt"], ["https://localhost/page.txt"]):
            with self.desktop.drag(what) as drag:
                drag.move_over(window.list)
                drag.check_refused(seconds=0.5)
                self.assertEqual(drag.drop(), "ignore")
        window.drop(*self.make("file.txt"))
        window.wait_for_documents("file.txt")


class Order(ListTest):
    def press_button(self, name):
        self.window.program.click(self.window.button(name))

    def press_keys(self, name):
        self.screen.key("alt+" + ("Home", "Up", "Down", "End")[BUTTONS.index(name)])

    def choose(self, name):
        self.choose_in_list_menu("Move", name, at=(20, 10 + 25 * self.window.documents().index("c.txt")))

    def test_the_selected_document_is_moved_with_buttons_keys_and_menu(self):
        window = self.open("a.txt", "b.txt", "c.txt", "d.txt")
        self.press_button("To the bottom")  # nothing is selected yet
        for move in (self.press_button, self.press_keys, self.choose):
            self.select("c.txt")
            for where, order in (("To the top", "cabd"), ("To the top", "cabd"), ("Up", "cabd"), ("Down", "acbd"),
                                 ("To the bottom", "abdc"), ("Down", "abdc"), ("Up", "abcd")):
                move(where)
                window.wait_for_documents(*(f"{letter}.txt" for letter in order))
                self.assertEqual(self.selected(), ["c.txt"])

    def test_documents_are_removed_with_menu_and_key_and_mail_takes_one_at_most(self):
        window = self.open("a.txt", "b.txt", "c.txt", "d.txt")
        mail = [window.option(MAIL), window.node.find("label", MAIL)]
        self.assertEqual([node.is_enabled for node in mail], [False, False])
        self.screen.key("Delete")  # nothing is selected yet
        self.select("b.txt")
        self.choose_in_list_menu("Remove", at=(20, 35))
        window.wait_for_documents("a.txt", "c.txt", "d.txt")
        self.assertEqual(self.selected(), ["c.txt"])
        self.screen.key("Delete")
        window.wait_for_documents("a.txt", "d.txt")
        self.assertEqual([node.is_enabled for node in mail], [False, False])
        self.screen.key("Delete")
        window.wait_for_documents("a.txt")
        for node in mail:
            node.wait_for("enabled")
        window.program.click(mail[1])
        mail[0].wait_for("checked")
        window.drop(self.desktop.home / "d.txt")
        window.wait_for_documents("a.txt", "d.txt")
        for node in mail:
            node.wait_for("-enabled")
        self.choose_in_list_menu("Clear list")
        window.wait_for_documents()
        for node in mail:
            node.wait_for("enabled")


class Menu(ListTest):
    def entries(self, menu):
        return {entry.name: entry.is_enabled for entry in menu.children() if entry.role == "menu item"
                and entry.is_showing}

    def state_of_menu(self, at=None):
        menu = self.window.program.open_menu(self.window.list, at=at)
        entries = self.entries(menu)
        self.screen.key("Escape")
        menu.wait_gone()
        return entries

    def test_its_entries_are_enabled_as_the_list_allows(self):
        names = TEXTS["english"][5]
        window = self.window = MainWindow(self)
        self.assertEqual(self.state_of_menu(), dict(zip(names, (True, False, False, False, False))))
        files = self.make("a.txt", "b.txt")
        window.drop(*files)
        window.wait_for_documents("a.txt", "b.txt")
        below = (100, 150)
        self.assertEqual(self.state_of_menu(at=below), dict(zip(names, (True, False, False, False, True))))
        self.assertEqual(self.state_of_menu(at=(20, 35)), dict.fromkeys(names, True))
        self.assertEqual(self.selected(), ["b.txt"])
        self.choose_in_list_menu("Open", at=(20, 35))
        wait_until(lambda: self.desktop.opened() == [str(files[1])], lambda: f"b.txt; {self.desktop.opened()} opened")
        self.assertEqual(self.entries(window.open_menu()), dict.fromkeys(TEXTS["english"][6], True))


class Keyboard(ListTest):
    def wait_focused(self, node):
        wait_until(lambda: node.is_focused, lambda: f"the focus on {node!r} in:\n{self.window.node.tree()}")

    def press(self, key, node):
        self.screen.key(key)
        self.wait_focused(node)

    def test_every_control_is_reached_and_used_without_a_mouse(self):
        window = self.window = MainWindow(self)
        combo = window.node.find("combo box")
        mail, show, merge = (window.option(name) for name in (MAIL, SHOW, MERGE))
        stops = [*(window.button(name) for name in BUTTONS), mail, show, merge, combo,
                 *(window.button(name) for name in ("Convert", "Help", "Minimise", "Close")), window.list]
        self.wait_focused(window.list)
        for stop in stops:
            self.press("Tab", stop)
        for stop in (*reversed(stops[:-1]), window.list):
            self.press("shift+Tab", stop)

        for key, option in (("alt+s", mail), ("alt+r", show), ("alt+m", merge)):
            self.assertFalse(option.is_checked)
            self.screen.key(key)
            option.wait_for("checked")
            self.screen.key(key)
            option.wait_for("-checked")
        self.press("alt+p", combo)
        self.screen.key("Down")
        combo.wait_for_name("Low")
        self.screen.key("alt+Down")  # moves documents in the list alone
        combo.find("list")
        self.screen.key("Down", "Return")
        combo.wait_for_name("Medium")
        self.press("shift+Tab", merge)
        self.screen.key("space")
        merge.wait_for("checked")

    def test_documents_are_chosen_and_converted_without_a_mouse(self):
        document = Path(shutil.copy(EXAMPLES / "Seed labels.ps", self.desktop.home))
        result = document.with_suffix(".pdf")
        window = self.window = MainWindow(self)
        self.screen.key("Menu")
        self.assertIn("Add…", window.program.menu().names("menu item"))
        self.screen.key("Escape", "Insert")
        dialog = window.program.dialog("Open files")
        self.screen.type(str(document))
        self.screen.key("Return")
        dialog.node.wait_gone()
        window.wait_for_documents("Seed labels.ps")

        self.press("shift+Tab", window.button("Close"))
        for name in ("Minimise", "Help", "Convert"):
            self.press("shift+Tab", window.button(name))
        for keys in ("Return", "space", "alt+c"):
            self.screen.key(keys)
            wait_until(result.exists, lambda: f"a result in:\n{window.node.tree()}", JOB_SECONDS)
            window.wait_until_idle()
            self.wait_focused(window.button("Convert"))
            result.unlink()

        self.screen.key("F1")
        wait_until(self.desktop.opened, "the help to be opened")
        self.screen.key("shift+F10")
        languages = window.program.menu().children()[0]
        self.assertEqual(languages.name, "Language")
        self.screen.key("Down", "Right", *["Down"] * languages.names("menu item").index("français"), "Return")
        window.button("Convertir")
        self.screen.key("alt+F4")
        self.assertEqual(window.program.wait_for_end(), 0)


class Surface(ListTest):
    NUDGE = 6  # pixels: until the window manager has taken hold of the window, the hand moves on already

    def drag(self, at, way):
        """Drags the window at a place in it; it must come along."""
        left, top = 300, 200
        # Also sees to it that the window manager has let go of the mouse after another drag.
        self.window.managed.move(left, top)
        begin = (left + at[0], top + at[1])
        self.screen.move_mouse(*begin)
        self.screen.hold()
        steps = itertools.cycle((self.NUDGE, 0))

        def is_coming():
            self.screen.move_mouse(begin[0] + next(steps), begin[1])
            return self.window.managed.frame[:2] != (left, top)
        wait_until(is_coming, "the window to come along")
        self.screen.move_mouse(begin[0] + way[0], begin[1] + way[1])
        wait_until(lambda: all(abs(now - before - wanted) <= self.NUDGE for now, before, wanted in
                               zip(self.window.managed.frame, (left, top), way)),
                   lambda: f"{way} from {left}, {top}; it is at {self.window.managed.frame}")
        self.screen.release()

    def test_the_window_is_moved_by_its_surface_and_by_nothing_else(self):
        window = self.open("a.txt")
        self.drag((250, 25), (90, 60))
        self.drag((300, 285), (-120, 130))
        window.managed.move(300, 200)
        for x, y in ((300 + 124, 200 + 214), (300 + 342, 200 + 360)):  # in the list, and on Convert
            self.screen.drag((x, y), (x + 60, y - 60))
        self.select("a.txt")
        self.assertEqual(window.managed.frame[:2], (300, 200))
        self.assertFalse(window.is_working())


class Accessibility(ListTest):
    def test_names_and_roles_are_those_of_the_language(self):
        window = self.window = MainWindow(self)
        words = TEXTS["english"][6]
        for language in ("français", "deutsch", "english"):
            menu = window.open_menu()
            self.assertEqual([entry.name for entry in menu.find_all("menu item")], list(words))
            window.program.choose_entry(words[0], language)
            buttons, options, quality, qualities, documents, list_menu, words = TEXTS[language]
            window.node.find("push button", buttons[-1])
            shown = [(node.role, node.name) for node in window.node.find_all() if node.role != "list item"]
            self.assertEqual(sorted(shown), sorted([
                ("image", ""), ("label", "Quorlin"), ("list", documents), ("combo box", qualities[0]),
                ("label", quality), ("label", buttons[-1]), *(("push button", name) for name in buttons),
                *(("check box", name) for name in options), *(("label", name) for name in options)]))
            combo = window.node.find("combo box")
            self.assertEqual((combo.names("list item"), combo.description), (list(qualities), quality))
            menu = window.program.open_menu(window.list)
            self.assertEqual([entry.name for entry in menu.children() if entry.role == "menu item"], list(list_menu))
            self.screen.key("Escape")
            menu.wait_gone()

    def test_states_are_told(self):
        window = self.open("a.txt", "b.txt")
        for node in window.node.find_all():
            if node.role in ("push button", "check box", "combo box", "list"):
                self.assertIn("focusable", node.states, node)
                self.assertEqual(node.is_enabled, node.name != MAIL, node)
        item = window.list.find("list item", "b.txt")
        self.assertEqual(item.description, str(self.desktop.home / "b.txt"))
        self.assertEqual(self.selected(), [])
        self.select("b.txt")
        self.assertEqual(self.selected(), ["b.txt"])
        window.option(SHOW).press()
        window.option(SHOW).wait_for("checked")
        self.assertFalse(window.option(MERGE).is_checked)
        window.button("Up").press()
        window.wait_for_documents("b.txt", "a.txt")


if __name__ == "__main__":
    main()
