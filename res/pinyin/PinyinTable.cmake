# Build-time script: asks ICU for the first letter of each Han character's reading and writes the letters as C++.
#
#     cmake -DUCONV=… -DOUTPUT=….cpp -P PinyinTable.cmake
#
# Two tables, one letter for each of U+3400 to U+9FFF: as the character is mostly read, and as it is read in names,
# which often is its other reading. A character without a reading has a dot.

# One character a line: beside one another, they would be read as words.
set(characters "")
foreach(code RANGE 13312 40959)
    math(EXPR hexadecimal "${code}" OUTPUT_FORMAT HEXADECIMAL)
    string(SUBSTRING "${hexadecimal}" 2 4 digits)
    string(APPEND characters "\\u${digits}\n")
endforeach()
file(WRITE "${OUTPUT}.txt" "${characters}")

set(tables "")
foreach(table IN ITEMS "pinyinInitials Han-Latin" "pinyinNameInitials Han-Latin/Names")
    string(REPLACE " " ";" table "${table}")
    list(GET table 0 name)
    list(GET table 1 reading)
    execute_process(
        COMMAND "${UCONV}" -f utf-8 -t utf-8
            -x ":: Hex-Any ; :: ${reading} ; :: Latin-ASCII ; :: Lower ; ([a-z]) [a-z]* > $1 ; [^a-z\\n]+ > '.' ;"
            "${OUTPUT}.txt"
        OUTPUT_VARIABLE letters COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "\n" "" letters "${letters}")
    string(LENGTH "${letters}" length)
    if(NOT length EQUAL 27648 OR NOT letters MATCHES "^[a-z.]+$")
        message(FATAL_ERROR "${reading}: ${length} letters instead of one for each character")
    endif()
    string(APPEND tables "extern const char ${name}[];\nconst char ${name}[] =\n")
    foreach(start RANGE 0 27647 108)
        string(SUBSTRING "${letters}" ${start} 108 line)
        string(APPEND tables "    \"${line}\"\n")
    endforeach()
    string(APPEND tables "    ;\n")
endforeach()
file(WRITE "${OUTPUT}" "${tables}")
