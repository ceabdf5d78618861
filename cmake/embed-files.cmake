# cmake -DFILES=a.html;b.css;c.js -DOUTPUT=Parts.h -P embed-files.cmake
# Makes a header with the text of each file, kHtml, kCss and kJs by its suffix, and with its SHA-256 in base64, kCssHash and
# kJsHash, as a content security policy names it. With -DBY=name the names are those of the files: kA, kAHash, kB, kBHash.

function(base64 hexadecimal result)
  set(alphabet ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
  set(text "")
  # 64 digits, and two to make it whole triples of bytes.
  foreach(at RANGE 0 65 3)
    string(SUBSTRING "${hexadecimal}00" ${at} 3 digits)
    math(EXPR high "0x${digits} >> 6")
    math(EXPR low "0x${digits} & 63")
    string(SUBSTRING ${alphabet} ${high} 1 first)
    string(SUBSTRING ${alphabet} ${low} 1 second)
    string(APPEND text ${first}${second})
  endforeach()
  string(SUBSTRING ${text} 0 43 text)
  set(${result} "${text}=" PARENT_SCOPE)
endfunction()

set(header "#pragma once\n\n// Made by the build.\n")
foreach(file IN LISTS FILES)
  if(BY MATCHES "^name$")
    get_filename_component(name ${file} NAME_WE)
  else()
    get_filename_component(name ${file} EXT)
    string(SUBSTRING ${name} 1 -1 name)
  endif()
  string(SUBSTRING ${name} 0 1 initial)
  string(SUBSTRING ${name} 1 -1 rest)
  string(TOUPPER ${initial} initial)
  file(SHA256 ${file} hash)
  base64(${hash} hash)
  file(READ ${file} text)
  string(APPEND header "\nconstexpr const char* k${initial}${rest} = R\"TARVO(${text})TARVO\";\n"
                       "constexpr const char* k${initial}${rest}Hash = \"${hash}\";\n")
endforeach()
file(WRITE ${OUTPUT} "${header}")
