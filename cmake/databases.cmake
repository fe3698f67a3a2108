# zorvel_databases(OUTPUT_FOLDER): makes Empty_Zorvel.mdb in the folder and, unless there is one, an empty
# Databases/ZorvelMaster.mdb below it. The master catalogue is no output of the rule: it fills up with the user's datasets,
# and must survive both a new schema and "clean".
function(zorvel_databases output_folder)
  set(schema ${PROJECT_SOURCE_DIR}/src/database/schema.sql)
  set(template ${output_folder}/Empty_Zorvel.mdb)
  add_custom_command(
    OUTPUT ${template}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${output_folder}/Databases
    COMMAND zorvel_make_databases ${schema} ${template} ${output_folder}/Databases/ZorvelMaster.mdb
    DEPENDS zorvel_make_databases ${schema}
    COMMENT "Making the databases"
    VERBATIM)
  add_custom_target(zorvel_databases ALL DEPENDS ${template})
endfunction()
