"""The driver of the component's pipe, and the reading of memory."""

import subprocess
import sys
import time
import unittest

from bench_path import FolderTest

from measure.component import Component, ComponentError, fresh_copy
from measure.memory import PeakMeter, memory_of, names, proportional_set_size, settled_memory
from measure.processes import end_all, run
from measure.processtree import ProcessTree
from measure.speed import ratio

COMPONENT_STAND_IN = """
import json, os, sys
def say(**report):
    print(json.dumps(report), flush=True)
say(type="hello", protocol={protocol}, component="stand-in", version="0")
for line in sys.stdin:
    request = json.loads(line)
    if request["type"] not in ("print", "distil"):
        continue
    job, file = request["job"], request["documents"][0]["file"]
    say(type="start", job=job)
    if b"refuse" in open(file, "rb").read():
        say(type="failure", job=job, index=1, reason="damaged", text="Cannot be read")
    output = file + "~"
    open(output, "w").write("made")
    say(type="progress", job=job, percent=100)
    say(type="complete", job=job, success=True, duration=0, outputs=[output])
"""


class ComponentTest(FolderTest):
    def convert(self, content, protocol=1):
        self.script("quorlin-pdf", COMPONENT_STAND_IN.format(protocol=protocol))
        document = self.folder / "a.odt"
        document.write_text(content)
        with Component(self.folder, subprocess.DEVNULL) as component:
            component.warm()
            return component.convert(fresh_copy(document, self.folder / "copies", 1))

    def test_a_document_is_printed_and_then_distilled(self):
        printed, whole, made = self.convert("text")
        self.assertLess(0, printed)
        self.assertLess(printed, whole)
        self.assertEqual(made, self.folder / "copies" / "1" / "copy1.odt~~")

    def test_a_failure_ends_the_measurement_with_its_reason(self):
        with self.assertRaisesRegex(ComponentError, "damaged: Cannot be read"):
            self.convert("refuse")

    def test_another_protocol_is_refused(self):
        with self.assertRaisesRegex(ComponentError, "greeting"):
            self.convert("text", protocol=2)

    def test_a_component_that_ends_at_once_is_noticed(self):
        self.script("quorlin-pdf", "raise SystemExit(3)\n")
        with self.assertRaises(ComponentError), Component(self.folder, subprocess.DEVNULL):
            pass


class MemoryTest(FolderTest):
    HOLD = "import time; held = bytearray(b'x') * (40 << 20); print(flush=True); time.sleep(60)"

    def start(self, program):
        process = subprocess.Popen([sys.executable, "-c", program], stdout=subprocess.PIPE, start_new_session=True)
        self.addCleanup(process.stdout.close)
        self.addCleanup(end_all, process)
        process.stdout.readline()
        return process

    def test_memory_of_children_counts(self):
        child = f"subprocess.Popen([sys.executable, '-c', {self.HOLD!r}])"
        process = self.start(f"import subprocess, sys; {child}.wait()")
        pids = ProcessTree(process.pid).update()
        self.assertEqual(len(pids), 2)
        self.assertGreater(memory_of(pids), proportional_set_size(process.pid) + (40 << 20))

    def test_the_peak_is_seen_while_it_lasts(self):
        meter = PeakMeter()
        program = "import time; held = bytearray(b'x') * (60 << 20); time.sleep(0.5); del held; time.sleep(0.3)"
        run([sys.executable, "-c", program], 30, meter.start)
        self.assertGreater(meter.finish(), 60 << 20)

    def test_memory_settles_only_once_the_wanted_process_runs(self):
        process = self.start(self.HOLD)
        own_name = names([process.pid])[0]
        self.assertIsNone(settled_memory(process.pid, 0.3, "no-such-engine"))
        settled = settled_memory(process.pid, 30, own_name)
        self.assertGreater(settled[0], 40 << 20)
        self.assertEqual(settled[1], 1)


class ProcessTest(FolderTest):
    def test_a_program_that_never_ends_is_ended_with_its_children(self):
        note = self.folder / "child"
        program = (
            "import subprocess, sys, time; "
            "child = subprocess.Popen(['sleep', '60'], start_new_session=True); "
            f"open({str(note)!r}, 'w').write(str(child.pid)); time.sleep(60)"
        )
        self.assertIsNone(run([sys.executable, "-c", program], 2).code)
        deadline = time.monotonic() + 10
        while self.lives(int(note.read_text())) and time.monotonic() < deadline:
            time.sleep(0.02)
        self.assertFalse(self.lives(int(note.read_text())))

    @staticmethod
    def lives(pid):
        try:
            with open(f"/proc/{pid}/stat", encoding="ascii") as stat:
                return stat.read().rpartition(")")[2].split()[0] != "Z"
        except OSError:
            return False

    def test_the_ratio_is_that_of_the_medians(self):
        self.assertEqual(ratio([1, 2, 90], [4, 4, 5]), 0.5)
        self.assertIsNone(ratio([], [1]))


if __name__ == "__main__":
    unittest.main()
