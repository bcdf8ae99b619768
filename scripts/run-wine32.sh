#!/usr/bin/env bash
# Runs a 32-bit Windows program under the WoW64 Wine that scripts/build-wine32.sh builds: ctest
# starts every test program of the win32 build through it.
source "$(dirname "${BASH_SOURCE[0]}")/wine32.sh"
if [ ! -x "$CORVANITE_WINE32" ]; then
    echo "no WoW64 Wine at $CORVANITE_WINE32: run scripts/build-wine32.sh" >&2
    exit 127
fi
exec "$CORVANITE_WINE32" "$@"
