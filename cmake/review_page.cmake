# Turns the page's source into a source of the program. Usage:
#   cmake -DPAGE=review_page.html -DOUTPUT=review_page.cpp -P review_page.cmake
# A content policy goes in that allows the page's own script and style, by their hashes, and nothing
# else. Policies take hashes in base64, which stands here: three hexadecimal digits are two of its.
file(READ ${PAGE} page)

function(source_of element result)
    string(REGEX MATCH "<${element}>(.*)</${element}>" ignored "${page}")
    string(SHA256 digits "${CMAKE_MATCH_1}")
    string(APPEND digits "00")  # to a multiple of three
    set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
    set(base64 "")
    foreach(at RANGE 0 63 3)
        string(SUBSTRING ${digits} ${at} 3 three)
        math(EXPR high "0x${three} / 64")
        math(EXPR low "0x${three} % 64")
        string(SUBSTRING ${alphabet} ${high} 1 first)
        string(SUBSTRING ${alphabet} ${low} 1 second)
        string(APPEND base64 ${first}${second})
    endforeach()
    string(SUBSTRING ${base64} 0 43 base64)
    set(${result} "'sha256-${base64}='" PARENT_SCOPE)
endfunction()

source_of(script script)
source_of(style style)
set(encoding "<meta charset=\"utf-8\">")
string(CONCAT policy "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
    "script-src ${script}; style-src ${style}; base-uri 'none'; form-action 'none'\">")
string(REPLACE "${encoding}\n" "${encoding}\n${policy}\n" page "${page}")
string(CONCAT source "#include \"near_text/output/review_page.h\"\n\n"
    "char const near_text::kReviewPage[] = R\"page(${page})page\";\n")
file(WRITE ${OUTPUT} "${source}")
