"""The comparison must see what is lost, and must not see what is not."""

import shutil
import subprocess
import unittest

from bench_path import FolderTest
from pdfbuilder import Page, PdfBuilder, action_link, page_link, sample, web_link

from measure.compare import compare
from measure.pdffacts import read_facts
from measure.pdfobjects import UnreadablePdf
from measure.render import page_differences

TOOLS = ("qpdf", "pdftotext", "pdffonts", "pdftoppm", "pdftops", "gs")
SECOND = PdfBuilder.page_reference(2)


def setUpModule():
    missing = [tool for tool in TOOLS if not shutil.which(tool)]
    if missing:
        raise unittest.SkipTest(f"not installed: {', '.join(missing)}")


class ComparisonTest(FolderTest):
    def compared(self, direct, result):
        """Both sides as builders."""
        paths = [builder.write(self.folder / f"{name}.pdf") for name, builder in (("a", direct), ("b", result))]
        return compare(*map(read_facts, paths))

    def through_postscript(self, path):
        """What a document is after plain printing and distilling."""
        printed, distilled = self.folder / "plain.ps", self.folder / "plain.pdf"
        subprocess.run(["pdftops", "-origpagesizes", path, printed], check=True, capture_output=True)
        subprocess.run(["gs", "-q", "-sDEVICE=pdfwrite", "-o", distilled, printed], check=True, capture_output=True)
        return distilled


class SameTest(ComparisonTest):
    def test_identical_files_keep_everything(self):
        comparison = self.compared(sample(), sample())
        for name in ("words", "characters", "external", "internal", "rects", "tops", "bookmarks", "info"):
            tally = comparison.tallies[name]
            self.assertGreater(tally.total, 0, name)
            self.assertEqual((tally.kept, tally.added), (tally.total, 0), name)
        self.assertTrue(comparison.pages_equal)
        self.assertEqual(comparison.sizes_off, 0)
        self.assertEqual(comparison.lost_title_author, 0)
        self.assertEqual(comparison.deviations, ["fonts not embedded: Helvetica"])

    def test_targets_are_the_same_however_they_are_named(self):
        place = f"[{SECOND} /XYZ 10 200 null]"
        explicit = self.two_pages(page_link(place))
        by_action = self.two_pages(action_link(place))
        by_dictionary = self.two_pages(page_link("/here")).catalog(f"/Dests << /here << /D {place} >> >>")
        by_tree = self.two_pages(action_link("(here)"))
        leaf = by_tree.add(f"<< /Limits [(here) (here)] /Names [(here) {place}] >>")
        by_tree.catalog(f"/Names << /Dests << /Kids [{leaf}] >> >>")
        for other in (by_action, by_dictionary, by_tree):
            comparison = self.compared(explicit, other)
            self.assertEqual(comparison.tallies["internal"].total, 1)
            self.assertEqual(comparison.tallies["internal"].kept, 1)
            self.assertEqual(comparison.tallies["tops"].kept, 1)

    def two_pages(self, annotation):
        return PdfBuilder([Page(["one"], annotations=[annotation]), Page(["two"])])

    def test_links_to_files_are_told_from_the_documents_folder(self):
        sides = []
        for stage in ("/tmp/first stage", "/tmp/second"):
            address = f"file://{stage.replace(' ', '%20')}/a/other.odt"
            path = PdfBuilder([Page(annotations=[web_link(address)])]).write(self.folder / f"{len(sides)}.pdf")
            sides.append(read_facts(path, stage))
        self.assertEqual(sides[0].links[0].address, "file:///(documents)/a/other.odt")
        self.assertEqual(compare(*sides).tallies["external"].kept, 1)

    def test_titles_are_the_same_in_either_encoding(self):
        plain = sample(info="/Title (Caf\\351)")
        wide = sample(info="/Title <FEFF00430061006600E9>")
        self.assertEqual(self.compared(plain, wide).tallies["info"].kept, 1)

    def test_a_turned_page_equals_one_drawn_turned(self):
        turned = PdfBuilder([Page(box=(0, 0, 300, 400), extra="/Rotate 90",
                                  annotations=[web_link("http://a/", (10, 20, 60, 30))])])  # fmt: skip
        drawn = PdfBuilder([Page(box=(0, 0, 400, 300), annotations=[web_link("http://a/", (20, 240, 30, 290))])])
        comparison = self.compared(turned, drawn)
        self.assertEqual(comparison.sizes_off, 0)
        self.assertEqual(comparison.tallies["rects"].kept, 1)

    def test_a_cropped_page_has_the_size_of_its_crop_box(self):
        cropped = PdfBuilder([Page(extra="/CropBox [50 50 250 350]")])
        self.assertEqual(self.compared(cropped, PdfBuilder([Page(box=(0, 0, 200, 300))])).sizes_off, 0)


class LossTest(ComparisonTest):
    def test_plain_printing_and_distilling_loses_links_bookmarks_and_title(self):
        path = sample().write(self.folder / "direct.pdf")
        comparison = compare(read_facts(path), read_facts(self.through_postscript(path)))
        for name in ("external", "internal", "bookmarks", "info"):
            self.assertGreater(comparison.tallies[name].total, 0, name)
            self.assertEqual(comparison.tallies[name].kept, 0, name)
        self.assertEqual(comparison.lost_title_author, 2)
        self.assertEqual(comparison.tallies["words"].kept, comparison.tallies["words"].total)

    def test_plain_printing_of_a_transparent_page_loses_its_words(self):
        pages = [Page(["gone with the picture"], transparent=True), Page(["these stay"])]
        path = PdfBuilder(pages).write(self.folder / "direct.pdf")
        words = compare(read_facts(path), read_facts(self.through_postscript(path))).tallies["words"]
        self.assertEqual((words.total, words.kept), (6, 2))

    def test_a_missing_page_is_noticed(self):
        comparison = self.compared(PdfBuilder([Page(["a"]), Page(["b"])]), PdfBuilder([Page(["a"])]))
        self.assertFalse(comparison.pages_equal)
        self.assertEqual(comparison.pages, (2, 1))
        self.assertIn("pages: 2 directly, 1 in the result", comparison.deviations)

    def test_a_page_size_may_differ_by_one_point_only(self):
        near = self.compared(PdfBuilder([Page()]), PdfBuilder([Page(box=(0, 0, 300.9, 400))]))
        far = self.compared(PdfBuilder([Page()]), PdfBuilder([Page(box=(0, 0, 301.2, 400))]))
        self.assertEqual((near.sizes_off, far.sizes_off), (0, 1))

    def test_words_count_as_often_as_they_stand_there(self):
        sides = [PdfBuilder([Page([line])]) for line in ("no no no yes", "no yes well")]
        words = self.compared(*sides).tallies["words"]
        self.assertEqual((words.total, words.kept, words.added), (4, 2, 1))

    def test_split_words_are_lost_but_their_characters_are_kept(self):
        tallies = self.compared(PdfBuilder([Page(["together"])]), PdfBuilder([Page(["to gether"])])).tallies
        self.assertEqual((tallies["words"].kept, tallies["words"].added), (0, 2))
        self.assertEqual((tallies["characters"].kept, tallies["characters"].added), (8, 0))

    def test_another_address_is_a_lost_and_an_added_link(self):
        sides = [PdfBuilder([Page(annotations=[web_link(address)])]) for address in ("http://a/", "http://a/b")]
        tally = self.compared(*sides).tallies["external"]
        self.assertEqual((tally.total, tally.kept, tally.added), (1, 0, 1))

    def test_a_link_to_another_page_is_lost(self):
        sides = [
            PdfBuilder([Page(annotations=[page_link(f"[{PdfBuilder.page_reference(number)} /Fit]")]), Page(), Page()])
            for number in (2, 3)
        ]
        self.assertEqual(self.compared(*sides).tallies["internal"].kept, 0)

    def test_a_moved_link_is_kept_but_not_in_place(self):
        rects = ((40, 300, 90, 310), (40, 303, 90, 313))
        sides = [PdfBuilder([Page(annotations=[web_link("http://a/", rect)])]) for rect in rects]
        comparison = self.compared(*sides)
        self.assertEqual(comparison.tallies["external"].kept, 1)
        self.assertEqual(comparison.tallies["rects"].kept, 0)

    def test_a_link_without_a_place_is_dead(self):
        sides = [PdfBuilder([Page(annotations=[page_link("(nowhere)")])]) for _ in range(2)]
        comparison = self.compared(*sides)
        self.assertEqual(comparison.dead_links, (1, 1))
        self.assertEqual(comparison.tallies["internal"].total, 0)


class BookmarkTest(ComparisonTest):
    def outlined(self, nested, order=("One", "Two"), page=1):
        builder = PdfBuilder([Page(), Page()])
        place = f"/Dest [{PdfBuilder.page_reference(page)} /Fit]"
        second = builder.add(f"<< /Title ({order[1]}) {place} >>")
        relation = f"/First {second} /Last {second} /Count 1" if nested else f"/Next {second}"
        first = builder.add(f"<< /Title ({order[0]}) {place} {relation} >>")
        return builder.outline(first, first if nested else second, 2)

    def kept(self, direct, result):
        return self.compared(direct, result).tallies["bookmarks"].kept

    def test_equal_bookmarks_are_kept(self):
        self.assertEqual(self.kept(self.outlined(True), self.outlined(True)), 2)

    def test_a_bookmark_on_another_level_is_lost(self):
        self.assertEqual(self.kept(self.outlined(True), self.outlined(False)), 1)

    def test_a_bookmark_with_another_target_is_lost(self):
        self.assertEqual(self.kept(self.outlined(True), self.outlined(True, page=2)), 0)

    def test_another_order_is_noticed(self):
        comparison = self.compared(self.outlined(False), self.outlined(False, ("Two", "One")))
        self.assertFalse(comparison.bookmark_order_kept)

    def test_an_outline_that_runs_in_a_circle_ends(self):
        builder = PdfBuilder([Page()])
        itself = builder.add("null")
        builder.replace(itself, f"<< /Title (Round) /Next {itself} /First {itself} >>")
        builder.outline(itself, itself, 1)
        self.assertEqual(self.kept(builder, self.outlined(False)), 0)


class RenderTest(ComparisonTest):
    def differences(self, *builders):
        paths = [builder.write(self.folder / f"{number}.pdf") for number, builder in enumerate(builders)]
        return page_differences(*paths, len(read_facts(paths[0]).page_sizes))

    def test_identical_pages_do_not_differ(self):
        self.assertEqual(self.differences(sample(), sample()), [0.0, 0.0])

    def test_only_the_changed_page_differs(self):
        same, changed = self.differences(
            PdfBuilder([Page(["one"]), Page(["two two two"])]), PdfBuilder([Page(["one"]), Page(["something"])])
        )
        self.assertEqual(same, 0.0)
        self.assertGreater(changed, 0.1)

    def test_a_page_missing_half_its_height_differs_by_that_half(self):
        pages = [PdfBuilder([Page(box=(0, 0, 288, height))]) for height in (288, 144)]
        self.assertAlmostEqual(self.differences(*pages)[0], 50.0, delta=1.0)


class UnreadableTest(ComparisonTest):
    def test_garbage_is_reported_as_unreadable(self):
        path = self.folder / "garbage.pdf"
        path.write_bytes(b"%PDF-1.4\nnothing of the kind\n")
        with self.assertRaises(UnreadablePdf):
            read_facts(path)


if __name__ == "__main__":
    unittest.main()
