#!/bin/sh
# wine.sh WINE PREFIX PROGRAM [ARGUMENT...]: runs a program for Windows. Wine prints no messages, and does not ask
# to install its optional parts.
wine=$1
WINEPREFIX=$2
shift 2
WINEDEBUG=-all
WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
export WINEPREFIX WINEDEBUG WINEDLLOVERRIDES
exec "$wine" "$@"
