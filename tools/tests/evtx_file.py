"""Writes small .evtx files for the tests: a single chunk, no templates."""

import struct
import zlib
from xml.etree import ElementTree

_HEADER_SIZE = 4096
_CHUNK_SIZE = 65536
_RECORDS_OFFSET = 512

_END_OF_STREAM = b"\x00"
_OPEN_TAG, _OPEN_TAG_WITH_ATTRIBUTES = 0x01, 0x41
_CLOSE_START_TAG, _CLOSE_EMPTY_TAG, _END_TAG = b"\x02", b"\x03", b"\x04"
_STRING_VALUE = b"\x05\x01"
_ATTRIBUTE, _ATTRIBUTE_WITH_NEXT = 0x06, 0x46
_FRAGMENT_HEADER = b"\x0f\x01\x01\x00"


def write_evtx(path, events):
    """Writes a file of these events, given as (record id, XML text)."""
    chunk = _chunk(events)
    header = struct.pack(
        "<8sQQQIHHHH76xI", b"ElfFile", 0, 0, events[-1][0] + 1, 128, 1, 3, _HEADER_SIZE, 1, 0
    )
    header += struct.pack("<I", zlib.crc32(header[:120]))
    path.write_bytes(header.ljust(_HEADER_SIZE, b"\0") + chunk)


def _chunk(events):
    records = b""
    for record_id, xml in events:
        last_offset = _RECORDS_OFFSET + len(records)
        records += _record(record_id, xml, last_offset)
    first_id, last_id = events[0][0], events[-1][0]
    end = _RECORDS_OFFSET + len(records)
    header = struct.pack(
        "<8sQQQQIIII64xI", b"ElfChnk", first_id, last_id, first_id, last_id, 128,
        last_offset, end, zlib.crc32(records), 0,
    )
    tables = bytes(_RECORDS_OFFSET - 128)
    header += struct.pack("<I", zlib.crc32(header[:120] + tables))
    return (header + tables + records).ljust(_CHUNK_SIZE, b"\0")


def _record(record_id, xml, offset):
    body_offset = offset + 24
    body = _FRAGMENT_HEADER
    body += _element(ElementTree.fromstring(xml), body_offset + len(body)) + _END_OF_STREAM
    size = 24 + len(body) + 4
    padding = -size % 8
    size += padding
    written = 133_000_000_000_000_000
    return (
        struct.pack("<4sIQQ", b"**", size, record_id, written)
        + body + bytes(padding) + struct.pack("<I", size)
    )


def _element(element, offset, outer_namespace=""):
    """Returns an element. `offset` is its place in the chunk: names refer to their own offsets."""
    namespace, name = _split(element.tag)
    attributes = list(element.attrib.items())
    if namespace != outer_namespace:
        attributes.insert(0, ("xmlns", namespace))
    head_size = 1 + 2 + 4
    start = _name(name, offset + head_size)
    if attributes:
        listed = b""
        list_offset = offset + head_size + len(start) + 4
        for index, (key, value) in enumerate(attributes):
            token = _ATTRIBUTE_WITH_NEXT if index + 1 < len(attributes) else _ATTRIBUTE
            listed += bytes([token]) + _name(key, list_offset + len(listed) + 1) + _string(value)
        start += struct.pack("<I", len(listed)) + listed
    content = _content(element, offset + head_size + len(start) + 1, namespace)
    body = start + content
    token = _OPEN_TAG_WITH_ATTRIBUTES if attributes else _OPEN_TAG
    return struct.pack("<BHI", token, 0xFFFF, len(body)) + body


def _content(element, offset, namespace):
    if element.text is None and not len(element):
        return _CLOSE_EMPTY_TAG
    content = _string(element.text) if element.text else b""
    for child in element:
        content += _element(child, offset + len(content), namespace)
        content += _string(child.tail) if child.tail else b""
    return _CLOSE_START_TAG + content + _END_TAG


def _name(name, offset):
    """Returns the offset of a name, which follows inline."""
    hashed = 0
    for character in name:
        hashed = (hashed * 65599 + ord(character)) & 0xFFFFFFFF
    entry = struct.pack("<IHH", 0, hashed & 0xFFFF, len(name)) + name.encode("utf-16-le") + b"\0\0"
    return struct.pack("<I", offset + 4) + entry


def _string(text):
    """Returns a text. U+E000 to U+E01F represent control characters, which XML does not allow."""
    text = text.translate({0xE000 + code: chr(code) for code in range(32)})
    units = text.encode("utf-16-le")
    return _STRING_VALUE + struct.pack("<H", len(units) // 2) + units


def _split(tag):
    namespace, _, name = tag.rpartition("}")
    return namespace.lstrip("{"), name
