#!/usr/bin/env python3
"""Checks in the headers of libraries for Windows what makes a fault in them harder to exploit.

usage: check_dll_header.py [--control-flow-guard] DLL...

Control-flow guard is checked on demand: MSVC alone offers it. Prints one line per check: "ok" or "FAILED", and its name.
"""
import pathlib
import struct
import sys

from checks import check, status

FLAGS = {"high-entropy addresses": 0x0020, "address-space layout randomization": 0x0040,
         "data execution prevention": 0x0100, "control-flow guard": 0x4000}
RELOCATIONS_STRIPPED = 0x0001
EXECUTABLE, WRITABLE = 0x20000000, 0x80000000


def read_header(image):
    """The characteristics of the file and of the DLL, the size of the relocations, and the flags of each section by name."""
    start = struct.unpack_from("<I", image, 0x3C)[0]
    if image[start:start + 4] != b"PE\0\0" or struct.unpack_from("<H", image, start + 24)[0] != 0x20B:
        raise ValueError("no library for 64-bit Windows")
    sections, = struct.unpack_from("<H", image, start + 6)
    optional_size, of_file = struct.unpack_from("<HH", image, start + 20)
    of_dll, = struct.unpack_from("<H", image, start + 24 + 70)
    relocations, = struct.unpack_from("<I", image, start + 24 + 112 + 5 * 8 + 4)
    table = start + 24 + optional_size
    entries = [struct.unpack_from("<8s28xI", image, table + 40 * number) for number in range(sections)]
    return of_file, of_dll, relocations, {name.rstrip(b"\0").decode(): flags for name, flags in entries}


def main():
    files = [pathlib.Path(name) for name in sys.argv[1:] if name != "--control-flow-guard"]
    for file in files:
        of_file, of_dll, relocations, sections = read_header(file.read_bytes())
        for name, flag in FLAGS.items():
            if name != "control-flow guard" or len(files) < len(sys.argv) - 1:
                check(f"{file.name} has {name}", "" if of_dll & flag else f"the characteristics are {of_dll:#06x}")
        movable = relocations and not of_file & RELOCATIONS_STRIPPED
        check(f"{file.name} can be moved", "" if movable else "it has no relocations")
        both = [name for name, flags in sections.items() if flags & EXECUTABLE and flags & WRITABLE]
        check(f"{file.name} has no section both writable and executable", ", ".join(both))
    return status()


sys.exit(main())
