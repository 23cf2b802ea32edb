"""The set-up asks apt for exactly what is missing, and says what to do when it cannot."""

import shutil
import stat
import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
PROLOGUE = f'''
set -euo pipefail
root=$1
shift
source "{PROJECT}/scripts/steps.sh"
source "{PROJECT}/scripts/packages.sh"
source "{PROJECT}/scripts/build.sh"
'''


class SetUp(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        (self.folder / "bin").mkdir()
        for program in ("bash", "env", "mkdir", "tail", "sed", "sort", "grep", "rm", "touch"):
            (self.folder / "bin" / program).symlink_to(shutil.which(program))
        self.fake("id", "echo 0")
        self.installed("cmake", "libreoffice-writer")
        self.fake("apt-get", f'echo "apt-get $* [${{DEBIAN_FRONTEND:-}}]" >>"{self.folder}/calls"')

    def fake(self, name, body):
        path = self.folder / "bin" / name
        path.write_text(f"#!/bin/bash\n{body}\n", encoding="utf-8")
        path.chmod(path.stat().st_mode | stat.S_IXUSR)

    def installed(self, *packages):
        lines = "".join(f"{package} installed\\n" for package in packages)
        self.fake("dpkg-query", f"printf '{lines}gone not-installed\\n'; exit 1")

    def sh(self, script, *arguments):
        environment = {"PATH": str(self.folder / "bin"), "HOME": str(self.folder)}
        done = subprocess.run([shutil.which("bash"), "-c", PROLOGUE + script, "sh", str(self.folder), *arguments],
                              env=environment, capture_output=True, text=True, check=False,
                              stdin=subprocess.DEVNULL)
        return done.returncode, done.stdout + done.stderr

    def calls(self):
        path = self.folder / "calls"
        return path.read_text(encoding="utf-8").splitlines() if path.exists() else []

    def ensure(self, *packages):
        return self.sh('ensure_packages "$@"', *packages)

    def test_nothing_missing_asks_nobody(self):
        status, output = self.ensure("cmake")
        self.assertEqual((status, output, self.calls()), (0, "", []))

    def test_an_alternative_that_is_there_is_kept(self):
        status, output = self.ensure("libreoffice-writer-nogui|libreoffice-writer")
        self.assertEqual((status, output, self.calls()), (0, "", []))

    def test_only_what_is_missing_is_installed(self):
        status, output = self.ensure("cmake", "ghostscript", "pkg-config|pkgconf")
        self.assertEqual(status, 0, output)
        self.assertIn("Installing through apt: ghostscript pkg-config", output)
        update, install = self.calls()
        self.assertTrue(update.endswith(" update [noninteractive]"), update)
        self.assertTrue(install.endswith(" install -y --no-install-recommends ghostscript pkg-config"
                                         " [noninteractive]"), install)

    def test_a_removed_package_counts_as_missing(self):
        self.ensure("gone")
        self.assertIn(" gone [noninteractive]", self.calls()[-1])

    def test_without_root_sudo_is_used(self):
        self.fake("id", "echo 1000")
        self.fake("sudo", f'echo "sudo $*" >>"{self.folder}/calls"')
        status, output = self.ensure("ghostscript")
        self.assertEqual(status, 0, output)
        self.assertIn("with sudo", output)
        self.assertTrue(all(call.startswith("sudo env DEBIAN_FRONTEND=noninteractive apt-get ")
                            for call in self.calls()), self.calls())
        self.assertEqual(len(self.calls()), 2)

    def test_without_root_and_sudo_the_command_is_told(self):
        self.fake("id", "echo 1000")
        status, output = self.ensure("ghostscript", "qpdf")
        self.assertEqual(status, 1)
        self.assertIn("apt-get update && apt-get install --no-install-recommends ghostscript qpdf", output)
        self.assertEqual(self.calls(), [])

    def test_a_failed_installation_ends_with_log_and_advice(self):
        self.fake("apt-get", 'echo "E: no such thing as $*"; exit 100')
        status, output = self.ensure("ghostscript")
        self.assertEqual(status, 1)
        self.assertIn("E: no such thing as", output)
        self.assertIn(f"{self.folder}/build/logs/apt-install.log", output)
        self.assertIn("sudo apt-get install --no-install-recommends ghostscript", output)

    def test_a_failed_update_does_not_stop_the_installation(self):
        self.fake("apt-get", '[ "${!#}" != update ]')
        status, output = self.ensure("ghostscript")
        self.assertEqual(status, 0, output)
        self.assertIn("Failed: apt-update", output)

    def test_without_apt_the_packages_are_named(self):
        (self.folder / "bin/apt-get").unlink()
        status, output = self.ensure("ghostscript", "pkg-config|pkgconf")
        self.assertEqual(status, 0)
        self.assertIn("ghostscript pkg-config", output)

    def test_an_old_cmake_is_told(self):
        self.fake("cmake", "echo cmake version 3.18.4")
        status, output = self.sh("check_cmake")
        self.assertEqual(status, 1)
        self.assertIn("version 3.25 or later", output)

    def test_a_later_cmake_is_taken(self):
        for version in ("3.25.0", "3.31.2", "4.0.1"):
            self.fake("cmake", f"echo cmake version {version}")
            self.assertEqual(self.sh("check_cmake"), (0, ""))

    def test_a_build_folder_of_another_place_is_dropped(self):
        cache = self.folder / "build/release/CMakeCache.txt"
        cache.parent.mkdir(parents=True)
        for home, kept in ((self.folder, True), ("/elsewhere", False)):
            cache.write_text(f"CMAKE_HOME_DIRECTORY:INTERNAL={home}\n", encoding="utf-8")
            self.assertEqual(self.sh(f'drop_foreign_build "{cache.parent}"'), (0, ""))
            self.assertEqual(cache.exists(), kept)

    def test_a_failed_build_ends_with_log_and_advice(self):
        self.fake("cmake", '[ "$1" = --version ] && echo cmake version 3.25.1 || { echo "boom: $*"; exit 2; }')
        status, output = self.sh("build release || exit 7")
        self.assertEqual(status, 7)
        self.assertIn("boom: -S", output)
        self.assertIn("build/logs/configure-release.log", output)

    def test_a_failed_stage_is_remembered(self):
        status, output = self.sh("stage one true\nstage two false || true\nstage three true\nsummary")
        self.assertEqual(status, 1)
        for line in ("passed      0 s  one", "FAILED      0 s  two", "passed      0 s  three"):
            self.assertIn(line, output)

    def test_a_locale_without_utf8_is_replaced(self):
        self.assertEqual(self.sh('use_utf8; printf %s "$LC_ALL"'), (0, "C.UTF-8"))
        self.assertEqual(self.sh('LANG=C.UTF-8; use_utf8; printf %s "${LC_ALL-unset}"'), (0, "unset"))


class Commands(unittest.TestCase):
    def test_unknown_arguments_of_the_test_command_are_refused(self):
        done = subprocess.run([PROJECT / "test", "--unheard-of"], capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn("Usage: ./test", done.stderr)

    def test_help_builds_nothing(self):
        for command in ("run", "test"):
            done = subprocess.run([PROJECT / command, "--help"], capture_output=True, text=True, check=False)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertIn(f"Usage: ./{command}", done.stdout)

    def test_a_closed_input_does_no_harm(self):
        done = subprocess.run(["bash", "-c", '"$0" --help <&-', PROJECT / "run"],
                              capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))


if __name__ == "__main__":
    unittest.main()
