# The completions of kestrelctl, where each shell looks for them. The program itself prints them.
set(completions "")
# completions_for(SHELL NAME FOLDER): installs them as FOLDER/NAME.
function(completions_for shell name folder)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/completions/${name})
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/completions
    COMMAND kestrelctl completion ${shell} > ${output}
    DEPENDS kestrelctl
    VERBATIM)
  install(FILES ${output} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder})
  set(completions ${completions} ${output} PARENT_SCOPE)
endfunction()

completions_for(bash kestrelctl bash-completion/completions)
completions_for(fish kestrelctl.fish fish/vendor_completions.d)
completions_for(zsh _kestrelctl zsh/vendor-completions)
add_custom_target(kestrel_completions ALL DEPENDS ${completions})
