# Doxygen reads each Markdown page through this filter, which writes code, tables and indented blocks as it needs
# them.

# Between single backticks, code would end at a quote; between double ones, at an odd number of double quotes.
function code(text) {
    if (text !~ /["%]/) return text == "" ? "" : "``" text "``"
    gsub(/[\\@%#<>&*]|::|--/, "\\\\&", text)
    gsub(/"/, "\\&quot;", text)
    return "<code>" text "</code>"
}

# What Doxygen calls a heading of this page.
function anchor(slug) {
    gsub(/-/, "_", slug)
    return page "_" slug
}

FNR == 1 {
    page = FILENAME
    gsub(/.*\/|\.md$/, "", page)
}
/^```/ { in_block = !in_block }
in_block || /^```/ { print; next }
{
    count = split($0, parts, "`") # text and code in turn
    line = ""
    columns = 0
    for (i = 1; i <= count; ++i) {
        if (i % 2) columns += gsub(/\|/, "|", parts[i])
        line = line (i % 2 ? parts[i] : code(parts[i]))
    }
}
# If the path has a blank, Doxygen cannot find a page by its file. So links name the page.
{
    while (match(line, /\]\([a-z_\/.]*[a-z_]+\.md\)/)) {
        target = substr(line, RSTART + 2, RLENGTH - 6)
        sub(/.*\//, "", target)
        line = substr(line, 1, RSTART - 1) "](@ref md_docs_" target ")" substr(line, RSTART + RLENGTH)
    }
    gsub(/\]\(\.\.\/README\.md\)/, "](@ref index)", line)
}
# Doxygen does not find a heading by its text, as a forge does. So a heading that a link above names gets an anchor.
{
    while (match(line, /\]\(#[^)]*\)/)) {
        slug = substr(line, RSTART + 3, RLENGTH - 4)
        linked[slug]
        line = substr(line, 1, RSTART - 1) "](@ref " anchor(slug) ")" substr(line, RSTART + RLENGTH)
    }
}
/^##/ {
    slug = tolower(line)
    gsub(/[^a-z0-9 -]/, "", slug)
    sub(/^ +/, "", slug)
    gsub(/ /, "-", slug)
    if (slug in linked) line = line " {#" anchor(slug) "}"
}
# Doxygen takes a table for text if a row has fewer cells than the head.
!/^\|/ { head = 0 }
/^\|/ && !head { head = columns }
/^\|/ { while (columns++ < head) line = line " |" }
# It takes indented code for text unless an empty line is above.
/^#/ { line = line "\n" }
{ print line }
