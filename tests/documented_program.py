"""documented_program.py OUTPUT DOCUMENT: writes the program that a document shows.

The ```cpp blocks, joined in order, are the program. The ```text blocks are its output, which document_test.sh compares. Other blocks
and indented blocks are ignored.
"""

import re
import sys
from pathlib import Path

output, document = sys.argv[1:]
text = Path(document).read_text("utf-8")
program = ""
for block in re.finditer(r"^```cpp\n(.*?)```", text, re.MULTILINE | re.DOTALL):
    line = text.count("\n", 0, block.start(1)) + 1
    program += f'#line {line} "{document}"\n{block[1]}'
Path(output).write_text(program, "utf-8")
