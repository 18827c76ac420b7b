# What Doxygen reads in place of a header or a page.

# Plain text, in which nothing is a command or markup.
function plain(text) {
    gsub(/[\\@%#<>*]/, "\\\\&", text)
    return text
}

# Code. Between backticks Doxygen would pair a quote in it with one elsewhere, and take a "%" away.
function code(text) {
    if (text !~ /["'%]/) return "``" text "``"
    text = plain(text)
    gsub(/::|--/, "\\\\&", text)
    gsub(/"/, "\\&quot;", text)
    return "<code>" text "</code>"
}

# A line, with its code between backticks. The rest is plain text or has markup.
function line(text, is_plain,    parts, count, i, result) {
    count = split(text, parts, "`")
    for (i = 1; i <= count; ++i) result = result (i % 2 == 0 ? code(parts[i]) : is_plain ? plain(parts[i]) : parts[i])
    return result
}

# Pages: indented code gets a blank line above it, and the rows of a table as many cells as its head has. A page has its
# file's name as its label, and is linked to by it: Doxygen's own labels have the whole path, in which it takes no blank.
FILENAME ~ /\.md$/ {
    if (FNR == 1 && FILENAME ~ /docs\/[a-z_]+\.md$/) {
        label = FILENAME
        gsub(/.*\/|\.md$/, "", label)
        $0 = $0 " {#md_" label "}"
    }
    while (match($0, /\]\((docs\/)?[a-z_]+\.md\)/)) {
        label = substr($0, RSTART + 2, RLENGTH - 6)
        sub(/^docs\//, "", label)
        $0 = substr($0, 1, RSTART) "(@ref md_" label ")" substr($0, RSTART + RLENGTH)
    }
    fence = /^```/
    indented = /^    /
    if (fence) fenced = !fenced
    if (!fenced && indented && !was_indented) print ""
    was_indented = indented
    if (!fenced && !fence && !indented) {
        cells = $0
        gsub(/`[^`]*`/, "", cells)
        cells = gsub(/\|/, "", cells)
        if (!/^\|/) columns = 0
        else if (columns == 0) columns = cells
        gsub(/``/, "")
        $0 = line($0, 0)
        while (cells++ < columns) $0 = $0 " |"
    }
    print
    next
}

# Headers: comments get Doxygen's marks, "///" above a declaration and "///<" after one. A comment stands for each
# declaration up to the next blank line. One above a directive or a namespace is about the file.
{
    match($0, /^ */)
    indent = substr($0, 1, RLENGTH)
}
/^ *\/\// {
    if (!in_comment) comment = ""
    comment = comment indent "///" line(substr($0, RLENGTH + 3), 1) "\n"
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
    $0 = substr($0, 1, at) "///< " line(substr($0, at + 4), 1)
}
{ print }
