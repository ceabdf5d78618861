# Run by cpack before it packs: adds the files that every Debian package has. They are no part of an installation.

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
")
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
