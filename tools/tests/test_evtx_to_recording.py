"""Tests of the conversion, with small .evtx files made here and read by evtxexport.

Run with: python3 -m unittest discover -s tools/tests
"""

import shutil
import sys
import tempfile
import unittest
from pathlib import Path
from xml.etree import ElementTree

sys.path[:0] = [str(Path(__file__).resolve().parent), str(Path(__file__).resolve().parent.parent)]
sys.dont_write_bytecode = True

import evtx_to_recording
from evtx_file import write_evtx

EVENT = (
    "<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'><System>"
    "<Provider Name='Alder-Sync' Guid='{{0b9f7b0e-0000-0000-0000-000000000001}}'/>"
    "<EventID Qualifiers='16384'>7</EventID><Level>4</Level><Task>0</Task>"
    "<Keywords>0x8000000000000000</Keywords>"
    "<TimeCreated SystemTime='2025-11-01T10:00:00.1234567Z'/>"
    "<EventRecordID>{record_id}</EventRecordID><Correlation/>"
    "<Execution ProcessID='12' ThreadID='16'/><Channel>{channel}</Channel>"
    "<Computer>KESTREL</Computer><Security/></System>{payload}</Event>"
)


def event(record_id=1, channel="Alder-Sync/Operational", payload="<EventData></EventData>"):
    return EVENT.format(record_id=record_id, channel=channel, payload=payload)


@unittest.skipUnless(shutil.which("evtxexport"), "evtxexport is not installed")
class Conversion(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.source = Path(directory.name) / "logs"
        self.source.mkdir()
        self.destination = Path(directory.name) / "recording"

    def log(self, file_name, *events):
        write_evtx(self.source / file_name, [(index + 1, xml) for index, xml in enumerate(events)])

    def convert(self):
        return evtx_to_recording.convert(self.source, self.destination)

    def written(self, file_name):
        return (self.destination / file_name).read_bytes().decode()

    def payload(self, payload):
        """Converts an event with this payload and returns the payload."""
        self.log("Alder-Sync%4Operational.evtx", event(payload=payload))
        self.convert()
        xml = self.written("Alder-Sync%4Operational.xml")
        return xml.partition("</System>")[2].partition("</Event>")[0]

    def channel(self, name):
        root = ElementTree.fromstring(self.written("channels.xml"))
        return next(channel.attrib for channel in root if channel.get("name") == name)

    def test_an_event_comes_out_as_the_service_renders_it(self):
        xml = event(payload="<EventData><Data Name='a'>x</Data></EventData>")
        self.log("Alder-Sync%4Operational.evtx", xml)
        self.assertEqual(self.convert(), [])
        self.assertEqual(
            self.written("Alder-Sync%4Operational.xml"), f"<Events>\r\n{xml}\r\n</Events>\r\n"
        )

    def test_payloads_keep_their_values(self):
        unchanged = (
            "<EventData></EventData>",
            "<EventData><Data Name='a'>1 &lt; 2 &amp; \"so\" 'on'</Data></EventData>",
            "<EventData><Data Name='empty'></Data><Data> </Data></EventData>",
            "<EventData><Data>line 1\nline 2\n</Data></EventData>",
            "<EventData><Data>größer 大 🜁</Data></EventData>",
            "<EventData Name='STEP'><Data Name='it&apos;s &lt;b&gt; &amp; \"c\"'>x</Data></EventData>",
            "<UserData><Step xmlns='urn:probe'><Number>4</Number><None at='9'/></Step></UserData>",
            "",
        )
        for payload in unchanged:
            with self.subTest(payload):
                self.assertEqual(self.payload(payload), payload)

    def test_carriage_returns_in_values_stay(self):
        self.assertEqual(
            self.payload("<EventData><Data>a&#13;&#10;b&#13;c</Data></EventData>"),
            "<EventData><Data>a\r\nb\rc</Data></EventData>",
        )

    def test_control_characters_become_replacement_characters(self):
        # write_evtx stores U+0001 and U+001B for these two characters.
        self.assertEqual(
            self.payload("<EventData><Data>a\ue001b\ue01bc</Data></EventData>"),
            "<EventData><Data>a\ufffdb\ufffdc</Data></EventData>",
        )

    def test_an_event_with_a_zero_character_is_cut_there_and_stays_well_formed(self):
        # The old evtxexport prints nothing after it, the new one continues with the next value.
        self.assertRegex(
            self.payload("<EventData><Data>kept\ue000lost</Data><Data>next</Data></EventData>"),
            "^<EventData><Data>kept</Data>(<Data>next</Data>)?</EventData>$",
        )

    def test_events_stand_oldest_first_and_exact_copies_once(self):
        self.log("one.evtx", event(9), event(3))
        self.log("two.evtx", event(3), event(5))
        self.convert()
        xml = self.written("Alder-Sync%4Operational.xml")
        ids = [int(part.partition("<")[0]) for part in xml.split("<EventRecordID>")[1:]]
        self.assertEqual(ids, [3, 5, 9])

    def test_the_channel_of_a_file(self):
        cases = (
            # file name, channel that the event names, channel
            ("Alder-Sync%4Operational.evtx", "Alder-Sync/Operational", "Alder-Sync/Operational"),
            ("saved copy.evtx", "System", "System"),
            ("Alder-Sync%4Debug.evtx", "", "Alder-Sync/Debug"),
            ("ForwardedEvents.evtx", "Security", "ForwardedEvents"),
            ("Windows PowerShell.EVTX", "Windows PowerShell", "Windows PowerShell"),
        )
        for file_name, named, channel in cases:
            self.log(file_name, event(channel=named))
        self.convert()
        for _, _, channel in cases:
            with self.subTest(channel):
                self.assertEqual(self.channel(channel)["enabled"], "true")

    def test_the_type_follows_the_last_word_of_the_name(self):
        cases = {
            "Security": "Admin",
            "Windows PowerShell": "Admin",
            "Alder-Sync/Admin": "Admin",
            "Alder-Sync/Operational": "Operational",
            "Alder-Sync/Trace": "Operational",
            "Alder-Sync-Analytic": "Analytic",
            "Alder-Sync/Verbose-Debug": "Debug",
        }
        for channel, kind in cases.items():
            with self.subTest(channel):
                self.assertEqual(evtx_to_recording.type_of(channel), kind)

    def test_the_owning_publisher(self):
        cases = (
            # channel, providers, publisher
            ("Alder-Sync/Operational", ("Alder-Sync", "Alder-Sync", "Harbor"), "Alder-Sync"),
            ("Alder-Sync-Server/Operational", ("Alder-Sync",), "Alder-Sync"),
            ("Alder-Sync/Operational", ("Harbor", "Harbor", "Alder-Sync"), "Alder-Sync"),
            ("Alder-Sync/Operational", (), "Alder-Sync"),
            ("System", ("disk",), ""),
        )
        for channel, providers, publisher in cases:
            events = [evtx_to_recording.Event(1, provider, channel, "") for provider in providers]
            with self.subTest(channel=channel, providers=providers):
                self.assertEqual(evtx_to_recording.publisher_of(channel, events), publisher)

    def test_channels_are_sorted_by_code_units(self):
        for name in ("a", "B", "\uffee", "\U0001f600"):
            self.log(f"{name}.evtx", event(channel=name))
        self.convert()
        root = ElementTree.fromstring(self.written("channels.xml"))
        names = [channel.get("name") for channel in root]
        self.assertEqual(names, ["B", "a", "\U0001f600", "\uffee"])

    def test_a_file_that_cannot_be_read_is_named_and_the_others_are_converted(self):
        (self.source / "broken.evtx").write_bytes(b"not a log")
        self.log("System.evtx", event(channel="System"))
        problems = self.convert()
        self.assertEqual(len(problems), 1)
        self.assertTrue(problems[0].startswith("broken.evtx: "))
        self.assertTrue((self.destination / "System.xml").exists())


if __name__ == "__main__":
    unittest.main()
