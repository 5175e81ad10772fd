# Makes the source with the page's two halves: cmake -DFOLDER=page -DOUT=explainpageparts.cpp -P embed.cmake
#
# explain.html has marks for the style, the script, the policy and the data. The style and the script are put
# in, the policy names them by their hashes so that no other may run, and the page is cut in two at the mark of
# the data.

# base64(OUT HEX) turns hexadecimal digits into base64, as a policy writes hashes.
function(base64 out hex)
    set(letters ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
    string(LENGTH ${hex} length)
    math(EXPR spare "(6 - ${length} % 6) % 6")
    string(REPEAT 0 ${spare} zeros)
    string(REGEX MATCHALL "......" groups ${hex}${zeros})
    set(text "")
    foreach(group IN LISTS groups)
        foreach(shift 18 12 6 0)
            math(EXPR place "(0x${group} >> ${shift}) & 63")
            string(SUBSTRING ${letters} ${place} 1 letter)
            string(APPEND text ${letter})
        endforeach()
    endforeach()
    math(EXPR padding "${spare} / 2")
    math(EXPR kept "(${length} * 4 + 5) / 6")
    string(SUBSTRING ${text} 0 ${kept} text)
    string(REPEAT = ${padding} equals)
    set(${out} ${text}${equals} PARENT_SCOPE)
endfunction()

# source(OUT CONTENT) gives the hash of an inline element's content as a source of a policy.
function(source out content)
    string(SHA256 hash "${content}")
    base64(text ${hash})
    set(${out} "'sha256-${text}'" PARENT_SCOPE)
endfunction()

file(READ ${FOLDER}/explain.html page)
file(READ ${FOLDER}/explain.css style)
set(script "\"use strict\";\n")
foreach(part explaindata.js explainlist.js explaintext.js explaintrees.js explain.js)
    file(READ ${FOLDER}/${part} content)
    string(APPEND script "${content}")
endforeach()
if(script MATCHES "</script|<!--" OR style MATCHES "</style")
    message(FATAL_ERROR "The page's script or style would end its own element")
endif()

source(scriptsource "${script}")
source(stylesource "${style}")
string(CONCAT policy "default-src 'none'; script-src ${scriptsource}; style-src ${stylesource}; "
       "base-uri 'none'; form-action 'none'; require-trusted-types-for 'script'; trusted-types 'none'")
string(REPLACE "@POLICY@" "${policy}" page "${page}")
string(REPLACE "@STYLE@" "${style}" page "${page}")
string(REPLACE "@SCRIPT@" "${script}" page "${page}")

string(FIND "${page}" "@DATA@" cut)
if(cut EQUAL -1)
    message(FATAL_ERROR "explain.html has no place for the data")
endif()
string(SUBSTRING "${page}" 0 ${cut} head)
math(EXPR cut "${cut} + 6")
string(SUBSTRING "${page}" ${cut} -1 tail)
file(WRITE ${OUT} "#include \"explainpageparts.h\"\n\n"
     "const std::string_view ExplainPageHead = R\"EXPLAINPAGE(${head})EXPLAINPAGE\";\n"
     "const std::string_view ExplainPageTail = R\"EXPLAINPAGE(${tail})EXPLAINPAGE\";\n")
