# cmake -DDOCUMENTS=FILE;FILE -DTABLES=REGEX -DOUTPUT=FILE -P documented_rows.cmake: writes the rows of the documents' tables as C++.
#
# The list `heads` gives each kind of table a name, found by the table's heading row. A name with a capital letter is a parameterized
# test suite; each table is an instance of it, named after the headings above the table. Another name is a function, which is called
# for each row. TABLES matches the names that are wanted.
#
# The first cell of a row is code. The others are texts, in which "\n" is a new line and "·" a blank, or the name of an error.
cmake_minimum_required(VERSION 3.25)
set(heads # START OF THE HEADING ROW=NAME, the start as a regular expression; the last entry that matches counts
    "Call \\|=Calls"
    "Call on a [SCD]=Calls"
    "New object \\| Text=Calls"
    "Condition \\|=Calls"
    "Calls=Sequences"
    "Tuple \\|=Sequences"
    "(Call|New object) \\| Unique names=Spellings"
    "Node \\|=Nodes"
    "Call \\| General text=general"
    "Value \\|=conversion"
    "Real \\| Text=digits"
    "Text \\| Number=reading"
    "Lines \\| Setting=setting")
set(output "")
set(instances "")
set(unused "")
foreach(document IN LISTS DOCUMENTS)
    file(READ "${document}" rest)
    string(APPEND rest "\n") # a line that ends a table
    cmake_path(GET document FILENAME page)
    set(number 0)
    set(kind "")
    while(NOT rest STREQUAL "")
        string(FIND "${rest}" "\n" end)
        string(SUBSTRING "${rest}" 0 ${end} line)
        math(EXPR end "${end} + 1")
        string(SUBSTRING "${rest}" ${end} -1 rest)
        math(EXPR number "${number} + 1")
        set(place "${page}:${number}")

        if(line MATCHES "^## (.*)")
            set(section "${CMAKE_MATCH_1}")
            set(headings "${section}")
        elseif(line MATCHES "^### (.*)")
            set(headings "${section} ${CMAKE_MATCH_1}")
        elseif(NOT line MATCHES "^\\|")
            if(kind MATCHES "^[A-Z]")
                string(APPEND output "};\nINSTANTIATE_TEST_SUITE_P(${instance}, ${kind}, testing::Values(k${instance}_${kind}));\n")
            endif()
            set(kind "")
        elseif(NOT kind)
            foreach(each IN LISTS heads)
                string(REGEX REPLACE "=.*" "" head "${each}")
                string(REGEX REPLACE ".*=" "" name "${each}")
                if(line MATCHES "^\\| ${head}" AND name MATCHES "^(${TABLES})$")
                    set(kind ${name})
                endif()
            endforeach()
            set(before "f.told(") # what is written before and after the code of a row
            set(after ")")
            if(line MATCHES "^\\| Node")
                set(before "")
                set(after "")
            elseif(line MATCHES "^\\| New object")
                set(before "f.told(RefPtr(")
                set(after "))")
            elseif(line MATCHES "^\\| Calls? on a (SELECT|CREATE|DROP) ")
                set(before "")
                string(TOLOWER ", f.told(*${CMAKE_MATCH_1})" after)
            elseif(line MATCHES "^\\| Calls? \\| Error")
                set(before "static_cast<void>((")
                set(after ")), Strings()")
            endif()
            if(kind MATCHES "^[A-Z]")
                string(REGEX REPLACE "[^A-Za-z0-9]+" "_" instance "${headings}")
                while(${instance}_${kind} IN_LIST instances)
                    string(APPEND instance _2)
                endwhile()
                list(APPEND instances ${instance}_${kind})
                string(APPEND output "\n${kind}::ParamType const k${instance}_${kind}{\n")
            endif()
        elseif(kind STREQUAL setting AND line MATCHES "^\\| `(.*)` \\|$") # texts are raw literals, in which "⏎" is a new line
            string(REPLACE "⏎" "\n" cells "${CMAKE_MATCH_1}")
            string(REPLACE "` | `" ")\", R\"(" cells "${cells}")
            string(APPEND output "setting(\"${place}\", R\"(${cells})\");\n")
        elseif(kind AND line MATCHES "^\\| `(.*)` \\|$")
            set(cells "${CMAKE_MATCH_1}")
            string(FIND "${cells}" "` | `" end)
            string(SUBSTRING "${cells}" 0 ${end} code)
            math(EXPR end "${end} + 5")
            string(SUBSTRING "${cells}" ${end} -1 texts)
            string(REPLACE "\"" "\\\"" texts "${texts}")
            string(REPLACE "` | `" "\", \"" texts "\"${texts}\"")
            string(REPLACE "·" " " texts "${texts}")
            string(REGEX REPLACE "\"(MDX_ERR_[A-Z_]+)\"" "std::to_string(\\1)" texts "${texts}")
            string(REPLACE "\"" "\\\"" title "${place}: ${code}")

            string(MD5 call "${code}")
            if(kind STREQUAL general) # kept for the row of another table with the same call
                set(general_${call} ", { ${texts} }")
                list(APPEND unused "${place}")
                set(unused_${call} "${place}")
            elseif(kind MATCHES "^[a-z]")
                string(APPEND output "${kind}(\"${title}\", WITH_NAMES(${code}), ${texts});\n")
            else()
                set(operation "")
                if(NOT kind STREQUAL Nodes)
                    string(REGEX REPLACE "\\(.*" "" operation "${code}")
                    set(operation "\"${operation}\", ")
                endif()
                set(others "")
                if(kind STREQUAL Spellings) # of which the second text is that with flat names
                    string(REPLACE "\", \"" "\" }, { \"" texts "${texts}")
                elseif(DEFINED general_${call})
                    set(others "${general_${call}}")
                    list(REMOVE_ITEM unused "${unused_${call}}")
                endif()
                string(APPEND output "    { \"${title}\", ${operation}WITH_NAMES(${before}${code}${after}), { ${texts} }${others} },\n")
            endif()
        endif()
    endwhile()
endforeach()
if(unused)
    message(FATAL_ERROR "No other table has these calls: ${unused}")
endif()
file(WRITE "${OUTPUT}" "${output}")
