# What Doxygen reads in place of a header or a page.

# Pages: code between backticks gets two of them, since Doxygen ends it at a single quote otherwise. Indented code gets
# a blank line above it. The rows of a table get as many cells as its head has.
FILENAME ~ /\.md$/ {
    if (/^```/) fenced = !fenced
    indented = /^    /
    if (!fenced && indented && !was_indented) print ""
    was_indented = indented
    if (!fenced && !indented && !/^```/) {
        cells = $0
        gsub(/`[^`]*`/, "", cells)
        cells = gsub(/\|/, "", cells)
        if (!/^\|/) columns = 0
        else if (columns == 0) columns = cells
        gsub(/``/, "")
        gsub(/`/, "``")
        while (cells++ < columns) $0 = $0 " |"
    }
    print
    next
}

# Headers: comments get Doxygen's marks, "///" above a declaration and "///<" after one. A comment stands for each
# declaration up to the next blank line. One above a directive or a namespace is about the file.

# A comment is plain text, but for the code in it.
function escaped(text,    parts, count, i, result) {
    count = split(text, parts, "`")
    for (i = 1; i <= count; ++i) {
        if (i % 2 == 1) gsub(/[\\@%#<>*]/, "\\\\&", parts[i])
        result = result (i > 1 ? "``" : "") parts[i]
    }
    return result
}

{
    match($0, /^ */)
    indent = substr($0, 1, RLENGTH)
}
/^ *\/\// {
    if (!in_comment) comment = ""
    comment = comment indent "///" escaped(substr($0, RLENGTH + 3)) "\n"
    comment_indent = indent
    in_comment = 1
    next
}
in_comment && /^(#|namespace)/ { comment = "/// @file\n" comment }
in_comment && NF > 0 { printf "%s", comment }
!in_comment && declared && indent == comment_indent && /^ *[^ }#]/ && !/:$|~|= default/ { printf "%s", comment }
NF == 0 || /^(#|namespace)/ { comment = "" }
{
    in_comment = 0
    declared = /;( +\/\/.*)?$/
}
/[^{ ] +\/\/ / && !/^#/ {
    at = index($0, " // ")
    $0 = substr($0, 1, at) "///< " escaped(substr($0, at + 4))
}
{ print }
