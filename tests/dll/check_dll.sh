#!/bin/sh
# What the shipped DLL shows and needs: its export table holds exactly the entry points, and it imports the host's
# libraries and nothing else beside Windows. Usage: check_dll.sh OBJDUMP DLL HOST_LIBRARY...
set -eu
tables=$("$1" -p "$2")
shift 2
exports=$(printf '%s\n' "$tables" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/^.*\] *\(\[[^]]*\] *\)*//p' | sed '/Table/d;/^$/d' | sort | tr '\n' ' ')
imports=$(printf '%s\n' "$tables" | sed -n 's/.*DLL Name: //p' | tr 'A-Z' 'a-z' | sort | tr '\n' ' ')
status=0
complain() {
    echo "$*"
    status=1
}
[ "$exports" = "NXSigningResource ufusr ufusr_ask_unload ufusr_cleanup " ] || complain "exports are: $exports"
for name in $imports; do
    case " kernel32.dll msvcrt.dll ole32.dll shell32.dll user32.dll $* " in
        *" $name "*) ;;
        *) complain "imports $name" ;;
    esac
done
for name in "$@"; do
    case " $imports" in
        *" $name "*) ;;
        *) complain "does not import $name" ;;
    esac
done
exit $status
