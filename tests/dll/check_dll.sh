#!/bin/sh
# What the shipped DLL shows and needs: its export table holds exactly the entry points, and it imports nothing beside
# Windows and the host. Usage: check_dll.sh OBJDUMP DLL
set -eu
tables=$("$1" -p "$2")
exports=$(printf '%s\n' "$tables" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/s/^.*\] *\(\[[^]]*\] *\)*//p' | sed '/Table/d;/^$/d' | sort | tr '\n' ' ')
imports=$(printf '%s\n' "$tables" | sed -n 's/.*DLL Name: //p' | tr 'A-Z' 'a-z' | sort | tr '\n' ' ')
status=0
if [ "$exports" != "NXSigningResource ufusr ufusr_ask_unload ufusr_cleanup " ]; then
    echo "exports are: $exports"
    status=1
fi
for name in $imports; do
    case "$name" in
        kernel32.dll | msvcrt.dll | ole32.dll | shell32.dll | user32.dll | libnxopen.dll) ;;
        *) echo "imports $name"; status=1 ;;
    esac
done
exit $status
