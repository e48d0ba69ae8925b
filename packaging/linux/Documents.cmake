# Manual pages, change logs and licences of others, compressed as distributions want them: without a time inside.
set(DEBIAN_CHANGELOG ${CMAKE_CURRENT_BINARY_DIR}/changelog)
execute_process(
  COMMAND date --utc --rfc-email --date=${KESTREL_RELEASE_DATE}
  OUTPUT_VARIABLE KESTREL_RELEASE_TIME
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(changelog.in ${DEBIAN_CHANGELOG} @ONLY)

set(documents ${CMAKE_INSTALL_DATADIR}/doc/kestrel)
set(compressed_documents "")
# compressed(DOCUMENT FOLDER): installs the document as DOCUMENT.gz.
function(compressed document folder)
  get_filename_component(name ${document} NAME)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz)
  add_custom_command(
    OUTPUT ${output}
    COMMAND gzip --best --no-name --stdout ${document} > ${output}
    DEPENDS ${document}
    VERBATIM)
  install(FILES ${output} DESTINATION ${folder})
  set(compressed_documents ${compressed_documents} ${output} PARENT_SCOPE)
endfunction()

foreach(program kestrel kestrelctl zenta-console)
  compressed(${CMAKE_CURRENT_SOURCE_DIR}/man/${program}.1 ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
compressed(${DEBIAN_CHANGELOG} ${documents})
compressed(${CMAKE_SOURCE_DIR}/CHANGELOG.md ${documents})
compressed(${CMAKE_SOURCE_DIR}/THIRD-PARTY.md ${documents})
add_custom_target(kestrel_documents ALL DEPENDS ${compressed_documents})
install(FILES copyright DESTINATION ${documents})
