#!/usr/bin/env bash
# output_test.sh FILE COMMAND...: compares the command's output with the file. Line ends of Windows count as those of the file.
set -euo pipefail
diff -u "$1" <("${@:2}" | sed 's/\r$//')
