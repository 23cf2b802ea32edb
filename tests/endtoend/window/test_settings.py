"""What the user chose is shown at once, kept until the next start, and never makes the program fail."""

import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.mainwindow import MainWindow  # noqa: E402
from harness.settings import Settings  # noqa: E402
from harness.waiting import wait_until  # noqa: E402
from harness.windowtest import WindowTest, main  # noqa: E402

OPTIONS = {
    "english": ("Send result by e-mail", "Show result file", "Merge files"),
    "deutsch": ("Per E-Mail senden", "Ergebnis anzeigen", "Zusammenführen"),
    "français": ("Envoyer par e-mail", "Afficher le résultat", "Fusionner"),
}


class SettingsTest(WindowTest):
    def setUp(self):
        super().setUp()
        self.own, self.machines = Settings(self.desktop.config), Settings(self.desktop.machine)

    def close(self, window):
        self.assertEqual(window.close(), 0)

    def texts(self, window):
        """Everything that the window says."""
        return [node.name for node in window.node.find_all() if node.name]

    def skin(self, window):
        """The one that the menu marks; how the window looks does not say its name."""
        menu = window.open_menu()
        entries = [entry for entry in menu.descendants() if entry.role == "menu item"]
        found = [entry.name for entry in entries if entry.is_checked and entry.parent != menu]
        self.screen.key("Escape")
        menu.wait_gone()
        return found[-1]  # after the language

    def picture(self, window):
        """What the window looks like, the focus in the list and the mouse elsewhere."""
        window.program.click(window.list, at=(20, 180))
        self.screen.move_mouse(1, 1)
        last = [None]

        def is_still():
            before, last[0] = last[0], window.managed.grab()
            return before == last[0]
        wait_until(is_still, "a window that is painted")
        return last[0]

    def expect(self, window, language, quality, skin, options=(False, False, False)):
        boxes = [window.option(name) for name in OPTIONS[language]]
        self.assertEqual([box.is_checked for box in boxes], list(options))
        self.assertEqual((window.quality, self.skin(window)), (quality, skin))


class Choices(SettingsTest):
    def test_language_and_skin_change_all_texts_and_the_look(self):
        window = MainWindow(self)
        english, varnex = self.texts(window), self.picture(window)
        window.choose_in_menu("Language", "deutsch")
        window.button("Umwandeln")
        german = self.texts(window)
        self.assertEqual(set(english) & set(german), {"Quorlin"})
        window.choose_in_menu("Sprache", "français")
        window.button("Convertir")
        french = self.texts(window)
        self.assertEqual(set(french) & set(german), {"Quorlin"})
        self.assertEqual(set(french) & set(english), {"Quorlin", "Documents"})
        window.choose_in_menu("Langue", "english")
        window.button("Convert")
        self.assertEqual(self.texts(window), english)

        self.assertEqual(self.picture(window), varnex)
        pictures = [varnex]
        for skin in ("Nightfall", "Clarity"):
            window.choose_in_menu("Skin", skin)
            wait_until(lambda: self.picture(window) not in pictures, f"the look of {skin}")
            pictures.append(self.picture(window))
            self.assertEqual(self.texts(window), english)
            window.set_option("Merge files", skin == "Nightfall")  # the controls are where they look to be
            window.set_option("Merge files", False)
        window.choose_in_menu("Skin", "Varnex")
        wait_until(lambda: self.picture(window) == varnex, "the look of the beginning")

    def test_they_are_there_after_a_restart(self):
        window = MainWindow(self)
        window.set_option("Show result file")
        window.set_option("Merge files")
        window.choose_quality("High")
        window.choose_in_menu("Skin", "Clarity")
        window.choose_in_menu("Language", "deutsch")
        window.button("Umwandeln")
        window.managed.move(33, 44)
        picture = self.picture(window)
        self.close(window)
        self.assertEqual(self.own.all(), {
            "ShowOption": "true", "MergeOption": "true", "Quality": "3", "Language": "deutsch", "Skin": "Clarity",
            "Position": "33,44"})

        again = MainWindow(self)
        self.assertEqual(again.managed.frame[:2], (33, 44))
        self.expect(again, "deutsch", "Hoch", "Clarity", (False, True, True))
        wait_until(lambda: self.picture(again) == picture, "the look of before")
        again.choose_in_menu("Sprache", "english")
        again.set_option("Merge files", False)
        self.close(again)
        self.assertEqual((self.own.all()["Language"], self.own.all()["MergeOption"]), ("english", "false"))


class Stored(SettingsTest):
    def test_nonsense_gives_the_defaults(self):
        self.own.write(ShowOption="1", MergeOption="TRUE", Quality="7", Skin="../../etc", Position="99999,-5000",
                       File=" , ,/none.doc,")
        window = MainWindow(self)
        self.expect(window, "english", "Default", "Varnex", (False, False, True))
        x, y, width, height = window.managed.frame
        self.assertTrue(x >= 0 and y >= 0 and x + width <= 1280 and y + height <= 1024, (x, y))
        self.assertEqual(window.documents(), [])
        self.close(window)
        self.own.write(Quality="abc", Skin="No such skin", Position="left", MergeOption="\x00\n")
        window = MainWindow(self)
        self.expect(window, "english", "Default", "Varnex")
        self.close(window)
        self.assertEqual((self.own.all()["Quality"], self.own.all()["Skin"]), ("0", "Varnex"))

    def test_those_of_the_machine_count_where_the_user_has_none(self):
        self.machines.write(Language="deutsch", Quality="1", Skin="Nightfall", ShowOption="true", MergeOption="true")
        window = MainWindow(self)
        self.expect(window, "deutsch", "Niedrig", "Nightfall")
        self.close(window)
        self.own.write(Language="français", Quality="2", Skin="Clarity")
        window = MainWindow(self)
        self.expect(window, "français", "Moyenne", "Clarity")
        self.close(window)
        self.own.write(Language="", Skin="No such skin")
        window = MainWindow(self)
        self.expect(window, "deutsch", "Mittel", "Nightfall")
        self.close(window)
        self.assertEqual(self.machines.all()["Skin"], "Nightfall")


if __name__ == "__main__":
    main()
