"""Creates what a build against NX finds on a designer's computer: an NX installation and the client library's folder.

Headers and libraries come from the devkit, with the names and paths of the originals. Some headers are changed to what
another release may declare, to check that the sources compile with both.
"""
import os
import pathlib
import re
import shutil
import subprocess

# The host's library that contains a symbol: the first whose pattern matches the mangled name. One library would do for a
# build; dividing them shows when the build does not link one that it needs. The stand-in of the client library uses the
# call interceptor.
LIBRARIES = {
    "libugopenint": r"UF_HELP_",
    "libufun": r"^UF_|6devkit15CallInterceptor",
    "libnxopenuicpp": r"NXOpen(2UI|12NXMessageBox|12BlockStyler)",
    "libnxopencpp_assemblies": r"NXOpen10Assemblies",
    "libnxopencpp_drawings": r"NXOpen8Drawings",
    "libnxopencpp": r"NXOpen",
}
# Header, its text, and the text in another release.
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
    """Replaces text in a file, and dates it by its original and this program, so that a rebuild compiles only what changed."""
    newest = max(file.stat().st_mtime_ns, pathlib.Path(__file__).stat().st_mtime_ns)
    text = file.read_text()
    for old, new in replacements:
        assert old in text, f"{file} does not contain {old}"
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
