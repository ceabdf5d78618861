# Run by cpack before it packs: adds the files that every Debian package has. They are no part of an installation.

# What is built into the checker and is not from Debian.
set(licences_checker "
The script grammar (tree-sitter-javascript 0.23.1) in tarvo-check is
Copyright (c) 2014 Max Brunsfeld

Permission is hereby granted, free of charge, to any person obtaining a copy
of this software and associated documentation files (the \"Software\"), to deal
in the Software without restriction, including without limitation the rights
to use, copy, modify, merge, publish, distribute, sublicense, and/or sell
copies of the Software, and to permit persons to whom the Software is
furnished to do so, subject to the following conditions:

The above copyright notice and this permission notice shall be included in all
copies or substantial portions of the Software.

THE SOFTWARE IS PROVIDED \"AS IS\", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR
IMPLIED, INCLUDING BUT NOT LIMITED TO THE WARRANTIES OF MERCHANTABILITY,
FITNESS FOR A PARTICULAR PURPOSE AND NONINFRINGEMENT. IN NO EVENT SHALL THE
AUTHORS OR COPYRIGHT HOLDERS BE LIABLE FOR ANY CLAIM, DAMAGES OR OTHER
LIABILITY, WHETHER IN AN ACTION OF CONTRACT, TORT OR OTHERWISE, ARISING FROM,
OUT OF OR IN CONNECTION WITH THE SOFTWARE OR THE USE OR OTHER DEALINGS IN THE
SOFTWARE.
")

foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} key)
  set(package ${CPACK_DEBIAN_${key}_PACKAGE_NAME})
  set(documents ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share/doc/${package})
  file(WRITE ${documents}/copyright "This is ${CPACK_PACKAGE_NAME} ${CPACK_PACKAGE_VERSION}, from
${CPACK_PACKAGE_CONTACT}.

Copyright (C) 2026 The Tarvo API check engine authors

Licensed under the Apache License, Version 2.0 (the \"License\"); you may not
use this software except in compliance with the License. On Debian systems,
the text of the License is in /usr/share/common-licenses/Apache-2.0.
${licences_${component}}")
  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  file(WRITE ${documents}/changelog "${package} (${CPACK_PACKAGE_VERSION}) stable; urgency=low

  * Packaged by cpack of the source of this version.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
  execute_process(COMMAND gzip -9nf ${documents}/changelog COMMAND_ERROR_IS_FATAL ANY)
endforeach()

file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/library/usr/share/lintian/overrides/${CPACK_DEBIAN_LIBRARY_PACKAGE_NAME}
     "# Hosts load the library by this name, and its interface does not change.
${CPACK_DEBIAN_LIBRARY_PACKAGE_NAME}: shared-library-lacks-version *
# Written by cpack, beside the trigger.
${CPACK_DEBIAN_LIBRARY_PACKAGE_NAME}: maintscript-calls-ldconfig *
")
