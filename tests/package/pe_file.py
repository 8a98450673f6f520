"""Reads a 64-bit Windows exe: headers, imported libraries, resources."""

import struct
from collections import namedtuple

DYNAMIC_BASE = 0x0040
HIGH_ENTROPY_VA = 0x0020
NX_COMPAT = 0x0100
RELOCS_STRIPPED = 0x0001

SECTION_EXECUTABLE = 0x20000000
SECTION_WRITABLE = 0x80000000

IMPORTS, RESOURCES, RELOCATIONS = 1, 2, 5

Section = namedtuple("Section", "name address size offset flags")
Directory = namedtuple("Directory", "address size")


class PeFile:
    def __init__(self, data):
        self.data = data
        header = self._u32(0x3C)
        if data[:2] != b"MZ" or data[header:header + 4] != b"PE\0\0":
            raise ValueError("not a Windows program")
        (self.machine, count, self.time_stamp, _, _, optional_size,
         self.characteristics) = struct.unpack_from("<HHIIIHH", data, header + 4)
        optional = header + 24
        if struct.unpack_from("<H", data, optional)[0] != 0x20B:
            raise ValueError("not a 64-bit program")
        self.subsystem_version = struct.unpack_from("<HH", data, optional + 48)
        self.dll_characteristics = struct.unpack_from("<H", data, optional + 70)[0]
        self._directories = [Directory._make(pair) for pair in struct.iter_unpack(
            "<II", data[optional + 112:optional + optional_size])]
        self.sections = [self._section(optional + optional_size + 40 * i) for i in range(count)]

    def directory(self, index):
        return self._directories[index]

    def imports(self):
        """Returns the names of the imported libraries."""
        names = []
        at = self._offset(self.directory(IMPORTS).address)
        while name := self._u32(at + 12):
            start = self._offset(name)
            names.append(self.data[start:self.data.index(b"\0", start)].decode("ascii"))
            at += 20
        return names

    def resources(self):
        """Returns {(type, id): bytes} with the first language of each resource."""
        root = self._offset(self.directory(RESOURCES).address)
        found = {}
        for kind, names in self._entries(root, 0):
            for identifier, languages in self._entries(root, names):
                _, leaf = self._entries(root, languages)[0]
                address, size = struct.unpack_from("<II", self.data, root + leaf)
                start = self._offset(address)
                found[kind, identifier] = self.data[start:start + size]
        return found

    def _entries(self, root, folder):
        """Returns (id, offset from the root) for each entry of a resource directory."""
        named, numbered = struct.unpack_from("<HH", self.data, root + folder + 12)
        first = root + folder + 16
        return [(key, value & 0x7FFFFFFF) for key, value in struct.iter_unpack(
            "<II", self.data[first:first + 8 * (named + numbered)])]

    def _section(self, at):
        name, size, address, _, offset, _, _, _, _, flags = struct.unpack_from(
            "<8sIIIIIIHHI", self.data, at)
        return Section(name.rstrip(b"\0").decode("ascii"), address, size, offset, flags)

    def _offset(self, address):
        for section in self.sections:
            if section.address <= address < section.address + section.size:
                return address - section.address + section.offset
        raise ValueError(f"no section holds the address {address:#x}")

    def _u32(self, at):
        return struct.unpack_from("<I", self.data, at)[0]
