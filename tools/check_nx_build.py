#!/usr/bin/env python3
"""Checks the build against NX, with MinGW and the devkit laid out as an NX installation: its results, and its messages
when something is missing.

Uses the stand-ins from the build of the preset windows. Prints one line per check: "ok" or "FAILED", and its name.
"""
import contextlib
import shutil
import subprocess
import sys
import zipfile

import nx_installation
from checks import SOURCES, check, differing, files_of_every_package, status

TOOLS = "x86_64-w64-mingw32"
STAND_INS = SOURCES / "build/windows"
FOLDER = SOURCES / "build/nx-installation"  # the path in the preset nx-check
UGOPEN = FOLDER / "Program Files/Siemens/NX2306/UGOPEN"
CLIENT = FOLDER / "Client Library"
ASIDE = FOLDER / "aside"
BUILD = SOURCES / "build/nx-check"
NUMBERS = "src/CMakeFiles/pivra_export.dir/export/host_numbers_nx.cpp.obj"
LIKE_32_BIT = ["-DCMAKE_CXX_FLAGS=-m32", "-DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY"]

# The path that is removed, further arguments, and the expected message of the configuration.
MISSING = [
    (UGOPEN / "uf.h", [], "set UGII_BASE_DIR"),
    (UGOPEN / "NXSigningResource.cpp", [], "NX refuses a library without this resource"),
    (UGOPEN / "libnxopenuicpp.lib", [], "repair the NX installation"),
    (CLIENT / "include/cpp_piv", [], "set CPP_PIV_SDK"),
    (CLIENT / "include/nlohmann", [], "set PIVRA_JSON_HEADERS"),
    (CLIENT / "lib", [], "has no release library"),
    (CLIENT / "bin/gopiv-windows-amd64.dll", [], "take the whole folder"),
    (None, ["-DPIVRA_NX_CHECK=OFF"], "NX needs another compiler than GNU"),
    (None, ["-B", BUILD / "32-bit", *LIKE_32_BIT], "NX loads libraries for x64 alone"),
    (None, ["-B", BUILD / "no-compiler", "-DCMAKE_CXX_COMPILER=cl"], "There is no cl in the PATH"),
]


def run(*command):
    """The status and the output, with whitespace reduced to single spaces because CMake breaks lines."""
    result = subprocess.run(command, cwd=SOURCES, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return result.returncode, " ".join(result.stdout.split())


def configure(*arguments):
    return run("cmake", "--preset", "nx-check", *arguments)


def check_success(name, result):
    check(name, "" if result[0] == 0 else result[1][-2000:])
    return result[0] == 0


def check_refusal(name, result, sentence):
    check(name, "it is accepted" if result[0] == 0 else "" if sentence in result[1] else result[1][-600:])


@contextlib.contextmanager
def without(path):
    if path is None:
        yield
        return
    path.rename(ASIDE)
    try:
        yield
    finally:
        ASIDE.rename(path)


@contextlib.contextmanager
def changed(file, *replacements):
    aside = shutil.copy2(file, file.with_name(file.name + " (aside)"))
    try:
        nx_installation.change(file, *replacements)
        yield
    finally:
        aside.rename(file)


def check_what_is_missing():
    for path, arguments, sentence in MISSING:
        with without(path):
            check_refusal(f"a configuration that stops with \"{sentence}\"", configure(*arguments), sentence)


def check_numbers():
    """A changed value of an enumerator stops the build, each with its own message."""
    clone = ["UF_CLONE_export_operation", "UF_CLONE_overwrite", "UF_CLONE_strip_family_status", "UF_CLONE_naming_rule"]
    with changed(UGOPEN / "uf_clone.h", *((f"{name},", f"{name} = 40,") for name in clone)), \
         changed(UGOPEN / "uf.h", ("UF_APP_DRAFTING 1", "UF_APP_DRAFTING 40")), \
         changed(UGOPEN / "NXOpen/PrintPDFBuilder.hxx", ("ActionOptionNative }", "ActionOptionNative = 40 }")):
        (BUILD / NUMBERS).unlink(missing_ok=True)
        result = run("ninja", "-C", BUILD, NUMBERS)
    for name in [*clone, "UF_APP_DRAFTING", "NXOpen::PrintPDFBuilder::ActionOptionNative"]:
        check_refusal(f"a changed value of {name} stops the build", result, f"differs from {name} in the headers")


def check_control_flow_guard():
    """What the preset nx asks of MSVC, which is not here: its toolset file with the commands that take options replaced."""
    script = BUILD / "toolset.cmake"
    script.write_text("set(MSVC ON)\nset(MSVC_VERSION 1929)\nset(CMAKE_SIZEOF_VOID_P 8)\n"
                      "set(CMAKE_CXX_COMPILER_ARCHITECTURE_ID x64)\nfunction(target_compile_definitions)\nendfunction()\n" +
                      "".join(f"function(add_{kind}_options)\nmessage(\"{kind}: ${{ARGN}}\")\nendfunction()\n"
                              for kind in ("compile", "link")) + f"include({SOURCES}/cmake/nx_toolset.cmake)\n")
    said = subprocess.run(["cmake", "-P", script], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True).stdout
    for kind in ("compile", "link"):
        asked = any(line.startswith(f"{kind}: ") and "/guard:cf" in line for line in said.splitlines())
        check(f"MSVC is asked to {kind} with control-flow guard", "" if asked else said)


def check_library():
    hosts = [f"{name}.dll" for name in nx_installation.LIBRARIES]
    library = BUILD / "bin/nx-integration.dll"
    check_success("its exports and imports", run("tests/dll/check_dll.sh", f"{TOOLS}-objdump", library, *hosts))


def pack():
    return run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", BUILD / "package")


def check_package():
    for text, variable in ((CLIENT / "licenses/nlohmann-json.txt", "PIVRA_JSON_LICENCE"),
                           (CLIENT / "LICENSE.txt", "PIVRA_CPP_PIV_LICENCES")):
        with without(text):
            if check_success(f"it can be configured without {text.name}", configure()):
                check_refusal(f"it is not packed without {text.name}", pack(), f"set {variable}")
    if not check_success("it can be configured again", configure()) or not check_success("it is packed", pack()):
        return
    with zipfile.ZipFile(next((BUILD / "package").glob("*.zip"))) as package:
        differing("the package contains exactly the files that ship",
                  {name for name in package.namelist() if not name.endswith("/")},
                  files_of_every_package() | {"application/cpp-piv.dll", "licences/cpp-piv/LICENSE.txt",
                                              "licences/nlohmann-json.txt"})
        check("packing does not change a signed library",
              "" if package.read("application/nx-integration.dll") == (BUILD / "bin/nx-integration.dll").read_bytes()
              else "the packed one differs")


def main():
    shutil.rmtree(FOLDER, ignore_errors=True)
    (BUILD / "CMakeCache.txt").unlink(missing_ok=True)  # but keep its objects
    nx_installation.lay_out_host(UGOPEN, SOURCES, STAND_INS, TOOLS)
    nx_installation.lay_out_client_library(CLIENT, SOURCES, STAND_INS)
    check_what_is_missing()
    if check_success("it configures", configure()) and check_success("it builds", run("ninja", "-C", BUILD)):
        check_numbers()
        check_control_flow_guard()
        check_library()
        check_package()
    return status()


sys.exit(main())
