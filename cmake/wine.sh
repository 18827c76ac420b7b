#!/bin/sh
# wine.sh WINE PREFIX PROGRAM [ARGUMENT...]: runs a program for Windows. Wine itself prints nothing, and does not
# ask for parts of it that are not installed.
wine=$1
WINEPREFIX=$2
shift 2
WINEDEBUG=-all
WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
export WINEPREFIX WINEDEBUG WINEDLLOVERRIDES
exec "$wine" "$@"
