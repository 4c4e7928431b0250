"""Shared by the programs that check the build: the lines "ok" and "FAILED", and the files of a package."""
import pathlib

SOURCES = pathlib.Path(__file__).resolve().parent.parent
failed = False


def check(name, fault):
    """Reports a check; `fault` says what is wrong and is empty if the check passed."""
    global failed
    failed = failed or bool(fault)
    print(f"FAILED {name}: {fault}" if fault else f"ok {name}", flush=True)


def differing(name, found, wanted):
    check(name, "" if found == wanted else f"only found {sorted(found - wanted)}, only wanted {sorted(wanted - found)}")


def status():
    return 1 if failed else 0


def files_of(folder):
    return {str(p.relative_to(folder)) for p in folder.rglob("*") if p.is_file()}


def files_of_every_package():
    """All files except the licence texts, which depend on the linked libraries."""
    shipped = {f"{top}/{name}" for top in ("application", "startup") for name in files_of(SOURCES / "package" / top)}
    built = {"application/nx-integration.dll", "application/gopiv-windows-amd64.dll"}
    return shipped | built | {"LICENCES.md"}
