# cmake -DDOCUMENT=FILE -DOUTPUT=FILE -P documented_program.cmake: writes the program that a document shows. The ```cpp
# blocks, joined in order, are the program. The ```text blocks are its output, which document_test.sh compares. Other blocks
# and indented blocks are ignored.
file(READ "${DOCUMENT}" rest)
set(program "")
set(line 1)
while(rest MATCHES "\n```cpp\n")
    string(FIND "${rest}" "\n```cpp\n" at)
    math(EXPR at "${at} + 8")
    string(SUBSTRING "${rest}" 0 ${at} before)
    string(SUBSTRING "${rest}" ${at} -1 rest)
    string(REGEX REPLACE "[^\n]" "" lines "${before}")
    string(LENGTH "${lines}" lines)
    math(EXPR line "${line} + ${lines}")

    string(FIND "${rest}" "```" end)
    string(SUBSTRING "${rest}" 0 ${end} block)
    string(APPEND program "#line ${line} \"${DOCUMENT}\"\n${block}")
endwhile()
file(WRITE "${OUTPUT}" "${program}")
