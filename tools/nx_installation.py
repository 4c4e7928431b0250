"""Lays out what a build against NX finds on a designer's computer: an NX installation, and the client library's folder.

The headers and what is linked are the devkit's, with names and places as in the originals. Here and there a header is
changed to what another release may have, so that the sources are seen to take both.
"""
import os
import pathlib
import re
import shutil
import subprocess

# In which library of the host a symbol lies: the first pattern that its mangled name holds. Finer than a build needs,
# so that a library which is not linked is missed.
LIBRARIES = {
    "libugopenint": r"UF_HELP_",
    "libufun": r"^UF_",
    "libnxopenuicpp": r"NXOpen(2UI|12NXMessageBox|12BlockStyler)",
    "libnxopencpp_assemblies": r"NXOpen10Assemblies",
    "libnxopencpp_drawings": r"NXOpen8Drawings",
    "libnxopencpp": r"NXOpen",
}
# Header, what it says, and what it says in another release.
OTHER_HOST = [
    ("uf_defs.h", "typedef bool logical;", "typedef unsigned char logical;"),
    ("NXOpen/PlotSourceBuilder.hxx", "void SetSelectedSheets(int count);", ""),
]
OTHER_CLIENT_LIBRARY = [
    ("cpp_piv/client.h", "std::string localAuthFlowLogout();",
     "std::string localAuthFlowLogout();\n    std::string localAuthFlowLogout(bool everywhere) const;"),
]


def take_other_release(folder, changes):
    for header, old, new in changes:
        change(folder / header, (old, new))


def change(file, *replacements):
    """Replaces text in a file. Its time tells only when the text or this program changed, so that a build can go on."""
    newest = max(file.stat().st_mtime_ns, pathlib.Path(__file__).stat().st_mtime_ns)
    text = file.read_text()
    for old, new in replacements:
        assert old in text, f"{file} does not hold {old}"
        text = text.replace(old, new)
    file.write_text(text)
    os.utime(file, ns=(newest, newest))


def write_import_libraries(ugopen, stand_in, tools):
    table = subprocess.run([f"{tools}-nm", stand_in], stdout=subprocess.PIPE, text=True, check=True).stdout
    imported = set(re.findall(r" I __imp_(\S+)", table))
    functions = set(re.findall(r" T (\S+)", table))
    symbols = {name: [] for name in LIBRARIES}
    for symbol in sorted(imported):
        library = next((name for name, pattern in LIBRARIES.items() if re.search(pattern, symbol)), None)
        if library:
            symbols[library].append(symbol if symbol in functions else f"{symbol} DATA")
    for name, exports in symbols.items():
        definition = ugopen / f"{name}.def"
        definition.write_text("\n".join([f"LIBRARY {name}.dll", "EXPORTS", *exports, ""]))
        subprocess.run([f"{tools}-dlltool", "-d", definition, "-l", definition.with_suffix(".lib")], check=True)
        definition.unlink()


def lay_out_host(ugopen, sources, build, tools):
    shutil.copytree(sources / "devkit/nxopen/include", ugopen, ignore=shutil.ignore_patterns("devkit"))
    take_other_release(ugopen, OTHER_HOST)
    write_import_libraries(ugopen, build / "devkit/nxopen/libnxopen.dll.a", tools)


def lay_out_client_library(folder, sources, build):
    shutil.copytree(sources / "devkit/cpp_piv/include", folder / "include")
    take_other_release(folder / "include", OTHER_CLIENT_LIBRARY)
    shutil.copytree(build / "headers/nlohmann/nlohmann", folder / "include/nlohmann")
    for name in ("lib/cpp-pivd.lib", "bin/cpp-piv.dll", "bin/cpp-pivd.dll", "bin/gopiv-windows-amd64.dll", "LICENSE.txt",
                 "licenses/nlohmann-json.txt"):
        (folder / name).parent.mkdir(exist_ok=True)
        (folder / name).write_text("neither to be loaded nor linked")
    shutil.copy2(build / "devkit/cpp_piv/libcpp_piv.a", folder / "lib/cpp-piv.lib")
