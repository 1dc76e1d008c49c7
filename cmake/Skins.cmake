# veldrin_embed_skins(OUTPUT FOLDER... [DRAWN FOLDER...]): a source file that carries these skins, made anew
# whenever a file of theirs changes. Their order gives them their numbers. Those drawn during the build
# come last; of them rows.txt is written last, and stands for all files.
function(veldrin_embed_skins output)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "DRAWN")
  set(here ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  set(files)
  set(skins)
  foreach(folder IN LISTS arg_UNPARSED_ARGUMENTS)
    get_filename_component(skin "${folder}" ABSOLUTE BASE_DIR ${PROJECT_SOURCE_DIR})
    if(NOT EXISTS ${skin}/rows.txt)
      message(FATAL_ERROR "${skin} is no skin: it has no rows.txt, which assets/draw_skin.py writes")
    endif()
    list(APPEND skins "${skin}")
    file(GLOB pictures CONFIGURE_DEPENDS ${skin}/*.bmp ${skin}/[24]x/*.bmp)
    list(APPEND files ${pictures} ${skin}/rows.txt)
  endforeach()
  foreach(skin IN LISTS arg_DRAWN)
    list(APPEND skins "${skin}")
    list(APPEND files ${skin}/rows.txt)
  endforeach()
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} "-DSKINS=${skins}" -DOUTPUT=${output} -P ${here}/EmbedSkins.cmake
    DEPENDS ${here}/EmbedSkins.cmake ${here}/EmbedBytes.cmake ${files}
    COMMENT "Embedding the skins"
    VERBATIM)
  # Never compiled together with others: a program that brings a table of its own needs nothing of this.
  set_source_files_properties(${output} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
