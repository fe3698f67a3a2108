# Runs at installation: completes the program folder, keeping what its user may have changed in an older one, and makes the
# links and the menu entry that lead to it.
get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
set(root "$ENV{DESTDIR}${prefix}")
set(folder "${root}/lib/zorvel")

file(GLOB_RECURSE shipped RELATIVE "${program_folder_source}" "${program_folder_source}/*")
list(FILTER shipped EXCLUDE REGEX "(^|/)(CMakeLists\\.txt|\\.gitkeep)$")
foreach(file IN LISTS shipped)
  if(file MATCHES "^(Directory\\.toml|(Reports|Trees)/.*|[^/]*\\.(ini|dat))$" AND EXISTS "${folder}/${file}")
    message(STATUS "Kept: ${folder}/${file}")
    continue()
  endif()
  get_filename_component(destination "${folder}/${file}" DIRECTORY)
  file(COPY "${program_folder_source}/${file}" DESTINATION "${destination}")
endforeach()
file(MAKE_DIRECTORY "${folder}/Databases" "${folder}/Reports" "${folder}/TempData" "${folder}/Trees")
# Leaves a master catalogue alone that is already there.
execute_process(
  COMMAND "${make_databases}" "${schema}" "${folder}/Empty_Zorvel.mdb" "${folder}/Databases/ZorvelMaster.mdb"
  COMMAND_ERROR_IS_FATAL ANY)

file(MAKE_DIRECTORY "${root}/bin")
foreach(name IN LISTS programs)
  file(CREATE_LINK "../lib/zorvel/${name}" "${root}/bin/${name}" SYMBOLIC)
endforeach()
# The whole path: a desktop session need not have the prefix's bin in its PATH.
set(program "${prefix}/lib/zorvel/zorvel")
configure_file("${desktop_entry}" "${root}/share/applications/zorvel.desktop" @ONLY)
message(STATUS "Zorvel writes to ${prefix}/lib/zorvel: whoever runs it must be allowed to")
