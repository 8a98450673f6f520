"""Tests of the scripts that compute what the program must show.

Run with: python3 -m unittest discover -s tests/oracle
"""

import os
import sys
import tempfile
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
sys.dont_write_bytecode = True

import expected_details
import expected_rows
import expected_tree
import lines_file
import record
from recording import Channel, Event, read_channels, read_events, unescape


def channel(path, publisher="", kind="Operational", enabled=True, denied=False):
    return Channel(path, kind, publisher, enabled, denied)


class RecordingTest(unittest.TestCase):
    """Provides a recording with one channel, Log."""

    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)
        self.channels("<channel name='Log' type='Admin' owningPublisher='' enabled='true'/>")

    def channels(self, elements):
        (self.directory / "channels.xml").write_text(f"<channels>{elements}</channels>")

    def log(self, *events):
        text = "\r\n".join(["<Events>", *events, "</Events>", ""])
        (self.directory / "Log.xml").write_bytes(text.encode())

    def events(self):
        return read_events(self.directory, channel("Log"))

    def event(self, xml):
        self.log(xml)
        return self.events()[0]


class Reading(RecordingTest):
    def test_events_come_newest_first(self):
        event = "<Event><System><EventRecordID>{}</EventRecordID></System></Event>"
        self.log(*(event.format(record_id) for record_id in (4, 9, 7)))
        self.assertEqual([event.record_id for event in self.events()], ["7", "9", "4"])

    def test_a_channel_without_a_file_is_empty(self):
        self.assertEqual(self.events(), [])

    def test_system_values(self):
        event = self.event(
            "<Event><System><Provider Name='A&amp;B'/><EventID Qualifiers='1'>7</EventID>"
            "<Level>2</Level><Keywords>0x80</Keywords><TimeCreated SystemTime='2025-01-02T03:04:05Z'/>"
            "<EventRecordID>11</EventRecordID><Execution ProcessID='12' ThreadID='13'/></System>"
            "<EventData><Level>9</Level></EventData></Event>"
        )
        self.assertEqual(
            (event.provider, event.event_id, event.level, event.keywords, event.time,
             event.record_id, event.process_id),
            ("A&B", "7", "2", "0x80", "2025-01-02T03:04:05Z", "11", "12"),
        )

    def test_absent_values_are_none(self):
        event = self.event("<Event><System></System></Event>")
        self.assertEqual(event, Event(xml="<Event><System></System></Event>"))

    def test_rendering_information_is_not_part_of_the_xml(self):
        cases = (
            # rendering information, message
            ("<RenderingInfo Culture='en-US'><Message>m</Message></RenderingInfo>", "m"),
            ("<RenderingInfo Culture='en-US'><Message></Message></RenderingInfo>", ""),
            ("<RenderingInfo><Message/></RenderingInfo>", ""),
            ("<RenderingInfo><Level>Error</Level></RenderingInfo>", None),
            ("<RenderingInfo/>", None),
            ("", None),
        )
        for rendering, message in cases:
            with self.subTest(rendering):
                event = self.event(f"<Event><UserData><X/></UserData>{rendering}</Event>")
                self.assertEqual(event.xml, "<Event><UserData><X/></UserData></Event>")
                self.assertEqual(event.message, message)

    def test_line_ends_stay_as_they_are(self):
        event = self.event(
            "<Event><EventData>a\r\nb\nc\rd</EventData>"
            "<RenderingInfo><Message>a\r\nb\nc\rd</Message></RenderingInfo></Event>"
        )
        self.assertEqual(event.message, "a\r\nb\nc\rd")
        self.assertEqual(event.xml, "<Event><EventData>a\r\nb\nc\rd</EventData></Event>")

    def test_references_are_resolved_once(self):
        self.assertEqual(unescape("&lt;&amp;amp;&#65;&#x20AC;&quot;&apos;&gt;"), "<&amp;A€\"'>")

    def test_load_results(self):
        cases = (
            (channel("A"), 0),
            (channel("A", denied=True), 5),
            (channel("A", kind="Analytic"), 15022),
            (channel("A", kind="Debug"), 15022),
            (channel("A", kind="Analytic", enabled=False), 50),
            (channel("A", kind="Debug", enabled=False), 50),
        )
        for it, code in cases:
            with self.subTest(it):
                self.assertEqual(it.load_result, code)

    def test_channels_come_in_the_order_of_the_file(self):
        self.channels(
            "<channel name='b' type='Debug' owningPublisher='P&amp;Q' enabled='false'/>"
            "<channel name='a' type='Admin' owningPublisher='' enabled='true' access='denied'/>"
        )
        self.assertEqual(
            read_channels(self.directory),
            [channel("b", "P&Q", "Debug", enabled=False), channel("a", "", "Admin", denied=True)],
        )


class Rows(RecordingTest):
    def test_level_names_and_icons(self):
        success, failure = "0x8020000000000000", "0x8010000000000000"
        cases = (
            # level, keywords, name, icon
            ("0", "0x0", "Information", 0),
            ("1", "0x0", "Critical", -1),
            ("2", "0x0", "Error", 2),
            ("3", "0x0", "Warning", 1),
            ("4", "0x0", "Information", 0),
            ("5", "0x0", "Verbose", -1),
            ("6", "0x0", "Audit Success", 3),
            ("7", "0x0", "Audit Failure", 4),
            ("8", "0x0", "Unknown", -1),
            ("255", success, "Unknown", -1),
            ("0", success, "Audit Success", 3),
            ("0", failure, "Audit Failure", 4),
            ("0", "0x8030000000000000", "Audit Success", 3),
            ("0", "0x20000000000000", "Information", 0),
            ("3", success, "Warning", 1),
            (None, failure, "Audit Failure", 4),
            (None, None, "Information", 0),
        )
        for level, keywords, name, icon in cases:
            with self.subTest(level=level, keywords=keywords):
                event = Event(level=level, keywords=keywords)
                self.assertEqual((record.cells(event)[0], record.icon(event)), (name, icon))

    def test_sources(self):
        cases = {
            "Alpha Service": "Alpha Service",
            "Alpha-Beta-Gamma": "Gamma",
            "A/B-C": "A/B-C",
            "Alpha-": "",
            "A-B-C": "C",
            "": "",
        }
        for provider, source in cases.items():
            with self.subTest(provider):
                self.assertEqual(record.short_source(Event(provider=provider)), source)

    def test_a_long_provider_name_is_cut_to_127_units_but_its_source_is_whole(self):
        event = Event(provider="x" * 126 + "😀-Source")
        self.assertEqual(record.kept_provider(event), "x" * 126 + "\ud83d")
        self.assertEqual(record.short_source(event), "Source")

    def test_numbers(self):
        event = Event(event_id="65535", process_id="4294967295", record_id="4294967301")
        self.assertEqual(record.cells(event)[3:], ["65535", "4294967295", "4294967301"])
        self.assertEqual(record.cells(Event())[3:], ["0", "0", "0"])

    def test_times(self):
        cases = (
            # time zone, time, cell
            ("UTC0", "2024-03-05T07:09:03.9999999Z", "05/03/2024 07:09:03"),
            ("UTC0", "2024-03-05T07:09:03Z", "05/03/2024 07:09:03"),
            ("UTC0", None, "01/01/1601 00:00:00"),
            ("AAA-05:30", "2024-12-31T18:30:00.000Z", "01/01/2025 00:00:00"),
            ("AAA+08", "2024-03-01T07:59:59.000000000Z", "29/02/2024 23:59:59"),
        )
        self.addCleanup(self._set_zone, os.environ.get("TZ"))
        for zone, moment, cell in cases:
            with self.subTest(zone=zone, moment=moment):
                self._set_zone(zone)
                self.assertEqual(record.local_time(Event(time=moment)), cell)

    def test_the_present_offset_holds_for_all_times(self):
        # In this zone daylight saving time applies on every day of the year except the last.
        self.addCleanup(self._set_zone, os.environ.get("TZ"))
        self._set_zone("AAA0BBB-1,J1/0,J365/0")
        offset = time.localtime().tm_gmtoff // 3600
        for moment in ("2025-06-01T00:00:00Z", "2025-12-31T12:00:00Z"):
            with self.subTest(moment):
                hour = int(moment[11:13]) + offset
                self.assertEqual(record.local_time(Event(time=moment))[11:13], f"{hour:02d}")

    @staticmethod
    def _set_zone(zone):
        if zone is None:
            os.environ.pop("TZ", None)
        else:
            os.environ["TZ"] = zone
        time.tzset()

    def test_a_row_has_its_cells_the_icon_and_the_provider(self):
        self.log(
            "<Event><System><Provider Name='A-B'/><EventID>7</EventID><Level>2</Level>"
            "<TimeCreated SystemTime='2024-03-05T07:09:03Z'/><EventRecordID>3</EventRecordID>"
            "<Execution ProcessID='12'/></System></Event>"
        )
        self.addCleanup(self._set_zone, os.environ.get("TZ"))
        self._set_zone("UTC0")
        self.assertEqual(
            list(expected_rows.expected_rows(self.directory, channel("Log"))),
            [["Error", "05/03/2024 07:09:03", "B", "7", "12", "3", 2, "A-B"]],
        )


class Tree(unittest.TestCase):
    def items(self, *channels):
        """Returns the items as (depth, text, icon)."""
        return [item[:3] for item in expected_tree.expected_tree(channels)]

    def test_an_empty_tree_has_the_fixed_folders(self):
        self.assertEqual(
            expected_tree.expected_tree([]),
            [
                (0, "Event Viewer (Local)", 0, "Event-Viewer-Local"),
                (1, "Applications and Service Logs", 3, "Applications-And-Service-Logs"),
                (1, "Windows Logs", 2, "Windows-Logs"),
            ],
        )

    def test_where_a_channel_stands(self):
        windows, services = "Windows Logs", "Applications and Service Logs"
        cases = (
            # path, publisher, the texts from its folder on
            ("Application", "", (windows, "Application")),
            ("ForwardedEvents", "", (services, "ForwardedEvents")),
            ("Forwarded Events", "", (windows, "Forwarded Events")),
            ("application", "", (services, "application")),
            ("Foo-Bar/Admin", "Foo-Bar", (services, "Foo", "Bar", "Admin")),
            ("Foo-Bar-Debug", "Foo-Bar", (services, "Foo", "Bar", "Debug")),
            ("Foo/Bar-Baz", "Foo", (services, "Foo", "Bar-Baz")),
            ("FooBar", "Foo", (services, "Foo", "FooBar")),
            ("Other/Log", "Foo", (services, "Foo", "Other/Log")),
            ("foo/Log", "Foo", (services, "Foo", "foo/Log")),
            ("Security/Admin", "Security", (windows, "Security", "Admin")),
            ("A-B-C-D/Main", "A-B-C-D", (services, "A", "B", "C-D", "Main")),
            ("-A/X", "-A", (services, "", "A", "X")),
            ("A-/X", "A-", (services, "A", "X")),
        )
        for path, publisher, texts in cases:
            with self.subTest(path=path, publisher=publisher):
                found = self.items(channel(path, publisher))
                wanted = [(index + 1, text) for index, text in enumerate(texts)]
                start = found.index(next(item for item in found if item[:2] == wanted[0]))
                self.assertEqual([item[:2] for item in found[start : start + len(wanted)]], wanted)
                self.assertEqual(len(found), 2 + len(texts))

    def test_publishers_share_their_folders(self):
        found = self.items(
            channel("Acme-Foo-Bar-Baz/Main", "Acme-Foo-Bar-Baz"),
            channel("Acme-Foo-Qux/Log", "Acme-Foo-Qux"),
        )
        self.assertEqual(
            [item[1] for item in found[2:-1]], ["Acme", "Foo", "Bar-Baz", "Main", "Qux", "Log"]
        )

    def test_icons_of_channels(self):
        cases = {"Debug": 4, "Admin": 5, "Analytic": 6, "Operational": 7}
        for kind, icon in cases.items():
            with self.subTest(kind):
                self.assertIn((2, "Log", icon), self.items(channel("Log", kind=kind)))

    def test_siblings_are_in_the_order_of_their_code_units(self):
        names = ("b", "B", "Ba", "\uffee", "😀", "a")
        found = self.items(*(channel(name) for name in names))
        self.assertEqual([item[1] for item in found[2:-1]], ["B", "Ba", "a", "b", "😀", "\uffee"])

    def test_a_channel_of_no_known_type_ends_the_tree(self):
        found = self.items(channel("a"), channel("b", kind="Other"), channel("c"))
        self.assertEqual([item[1] for item in found[1:]], ["Applications and Service Logs", "a"])


class Details(unittest.TestCase):
    def test_event_data(self):
        cases = (
            # XML, values
            ("<EventData><Data Name='a'>x</Data><Data Name='b'>y</Data></EventData>", "x\ny\n"),
            ("<EventData><Data>x</Data><Data>x</Data></EventData>", "x\nx\n"),
            ("<EventData><Data></Data><Data>\r\n\n</Data><Data> </Data></EventData>", " \n"),
            ("<EventData><Data>x\ny\r\n\r\n</Data></EventData>", "x\ny\n"),
            ("<EventData><Data>a &amp; &lt;b&gt;</Data></EventData>", "a &amp; &lt;b&gt;\n"),
            ("<EventData><Data N='a'/><Data N='b'>y</Data></EventData>", "<Data N='b'>y\n"),
            ("<EventData><Data Name='a'/></EventData>", ""),
            ("<EventData Name='t'><Data>x</Data></EventData>", ""),
            ("<UserData><X><Data>u</Data></X></UserData>", "u\n"),
            ("<UserData><DataX>s</DataX><Data>u</Data></UserData>", "s</DataX><Data>u\n"),
            ("<UserData><Data>u</Data></UserData><EventData><Data>e</Data></EventData>", "e\nu\n"),
            ("<EventData><Data>x</Data>", ""),
            ("", ""),
        )
        for xml, values in cases:
            with self.subTest(xml):
                self.assertEqual(expected_details.event_data(xml), values)

    def test_line_breaks_become_pairs(self):
        self.assertEqual(
            expected_details.with_line_end_pairs("a\rb\nc\r\nd\n\re"),
            "a\r\nb\r\nc\r\nd\r\n\r\ne",
        )

    def test_which_text_an_event_has(self):
        texts = {"Known"}
        cases = (
            # provider, message, code
            ("Known", "text", 0),
            ("Known", "", 0),
            ("Known", None, 15027),
            ("Unknown", None, 2),
        )
        for provider, message, code in cases:
            with self.subTest(provider=provider, message=message):
                event = Event(provider=provider, message=message)
                self.assertEqual(expected_details.description(event, texts)[0], code)

    def test_a_message_is_shown_as_it_is(self):
        event = Event(provider="P", message="two\r\nlines\n", record_id="5")
        self.assertEqual(
            list(expected_details.expected_details([event], {"P"})), [(5, 0, "two\r\nlines\r\n")]
        )

    def test_the_fallback_text(self):
        event = Event(provider="A-B", event_id="7", xml="<EventData><Data>x</Data></EventData>")
        self.assertEqual(
            expected_details.description(event, set()),
            (2, "The description for Event ID 7 from source A-B cannot be found. Either the component "
                "that raises this event is not installed on your local computer or the installation is "
                "corrupted.You can install or repair the component on the local computer.\n\nIf the "
                "event originated on another computer, the display information had to be saved with "
                "the event.\n\nThe following information was included with the event:\n\nx\n\n\nThe "
                "message resource is present but the message was not found in the message table\n"),
        )

    def test_a_provider_whose_name_is_too_long_is_not_registered(self):
        provider = "p" * 128
        event = Event(provider=provider, message="text")
        code, text = expected_details.description(event, {provider})
        self.assertEqual(code, 2)
        self.assertIn(f"from source {provider[:127]} cannot", text)


class Files(unittest.TestCase):
    def test_fields_are_escaped(self):
        self.assertEqual(lines_file.escape("a\tb\nc\rd\\n"), r"a\tb\nc\rd\\n")

    def test_a_file_for_each_channel_with_records_and_an_index(self):
        with tempfile.TemporaryDirectory() as directory:
            channels = [channel("Empty"), channel("Full"), channel("Denied", denied=True)]
            records = {"Empty": [], "Full": [("x", 1), ("\ud83d", 2)], "Denied": [("y", 1)]}
            lines_file.write_channels(directory, channels, lambda it: records[it.path])
            files = {path.name: path.read_bytes() for path in Path(directory).iterdir()}
        self.assertEqual(
            files,
            {
                "index.tsv": b"Empty\t\t0\t0\nFull\t0001.tsv\t2\t0\nDenied\t\t0\t5\n",
                "0001.tsv": b"x\t1\n\xed\xa0\xbd\t2\n",
            },
        )


if __name__ == "__main__":
    unittest.main()
