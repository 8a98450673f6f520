"""Decodes the resources of a program: dialogs, icon groups and version information."""

import struct
from collections import namedtuple

DIALOG, GROUP_ICON, VERSION, MANIFEST = 5, 14, 16, 24

# The standard window classes have numbers in a dialog template.
CLASS_NAMES = {0x0080: "button", 0x0082: "static"}

Dialog = namedtuple("Dialog", "style caption point_size font rectangle controls")
# kind: a window class in lower case, because case is insignificant.
Control = namedtuple("Control", "kind identifier rectangle text")


class _Reader:
    def __init__(self, data, at=0):
        self._data = data
        self._at = at

    def take(self, form):
        values = struct.unpack_from("<" + form, self._data, self._at)
        self._at += struct.calcsize("<" + form)
        return values if len(values) > 1 else values[0]

    def text(self):
        units = list(iter(lambda: self.take("H"), 0))
        return struct.pack(f"<{len(units)}H", *units).decode("utf-16-le")

    def text_or_number(self):
        if struct.unpack_from("<H", self._data, self._at)[0] == 0xFFFF:
            return self.take("HH")[1]
        return self.text()

    def align(self):
        self._at = (self._at + 3) & ~3


def read_resources(exe):
    """Returns {(type, id): bytes} with the first language of each resource of a pefile.PE."""
    found = {}
    for kind in exe.DIRECTORY_ENTRY_RESOURCE.entries:
        for resource in kind.directory.entries:
            place = resource.directory.entries[0].data.struct
            found[kind.id, resource.id] = exe.get_data(place.OffsetToData, place.Size)
    return found


def read_dialog(data):
    """Decodes an extended dialog template."""
    reader = _Reader(data)
    version, signature = reader.take("HH")
    if (version, signature) != (1, 0xFFFF):
        raise ValueError("not an extended dialog template")
    _, _, style, count = reader.take("IIIH")
    rectangle = reader.take("hhhh")
    reader.text_or_number()  # menu
    reader.text_or_number()  # class
    caption = reader.text()
    point_size, _, _, _ = reader.take("HHBB")
    font = reader.text()
    controls = [_read_control(reader) for _ in range(count)]
    return Dialog(style, caption, point_size, font, rectangle, controls)


def _read_control(reader):
    reader.align()
    reader.take("III")  # help, extended style, style
    rectangle = reader.take("hhhh")
    identifier = reader.take("i")
    kind = reader.text_or_number()
    text = reader.text_or_number()
    if reader.take("H"):
        raise ValueError("creation data is not expected")
    return Control(CLASS_NAMES.get(kind) or kind.lower(), identifier, rectangle, text)


def icon_sizes(group):
    """Returns the widths of a group's images, which are square."""
    count = struct.unpack_from("<H", group, 4)[0]
    sizes = [struct.unpack_from("<BB", group, 6 + 14 * i) for i in range(count)]
    if any(width != height for width, height in sizes):
        raise ValueError("a picture is not square")
    return [width or 256 for width, _ in sizes]


def fixed_versions(version):
    """Returns the file version and the product version, each as four numbers."""
    at = version.index(struct.pack("<I", 0xFEEF04BD))
    file_high, file_low, product_high, product_low = struct.unpack_from("<IIII", version, at + 8)
    return _numbers(file_high, file_low), _numbers(product_high, product_low)


def _numbers(high, low):
    return high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF


def version_text(version, name):
    """Returns a string of the version information by its name."""
    key = (name + "\0").encode("utf-16-le")
    reader = _Reader(version, version.index(key) + len(key))
    reader.align()
    return reader.text()
