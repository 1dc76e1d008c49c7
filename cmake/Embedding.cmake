# What a program gets that takes the component into itself, from this build or installed: prefixed
# targets, and an include path with the public headers alone. docs/embedding.md tells how they are used.
#
# A build makes the include path of forwarding headers, so that a header that is edited needs no second
# configuration and messages name the real file.
set(veldrin_include ${PROJECT_BINARY_DIR}/include)
set(veldrin_package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Ambrisor)
# Who installs the host wants a player; the rest has to be asked for: cmake --install --component embedding.
set(veldrin_embedding COMPONENT embedding)
if(VELDRIN_HOST)
  list(APPEND veldrin_embedding EXCLUDE_FROM_ALL)
endif()

# The driver of a desktop is an export of its own: only who asks for it needs Qt.
function(veldrin_install_library target export)
  install(TARGETS ${target} EXPORT ${export}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} ${veldrin_embedding}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ${veldrin_embedding} NAMELINK_COMPONENT embedding
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} ${veldrin_embedding})
endfunction()

# Adds to `result`, in the caller, a header of the tree and all of the tree that it includes. Whoever begins
# to include another one is noticed: the build configures itself anew.
function(veldrin_add_header header result)
  set(headers ${${result}})
  if(NOT header IN_LIST headers)
    list(APPEND headers ${header})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${header})
    file(STRINGS ${PROJECT_SOURCE_DIR}/${header} includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(include IN LISTS includes)
      string(REGEX REPLACE "^[^\"]*\"([^\"]*)\".*" "\\1" included ${include})
      veldrin_add_header(${included} headers)
    endforeach()
  endif()
  set(${result} ${headers} PARENT_SCOPE)
endfunction()

function(veldrin_publish_headers)
  set(headers "")
  foreach(header IN LISTS ARGN)
    veldrin_add_header(${header} headers)
  endforeach()
  foreach(header IN LISTS headers)
    file(CONFIGURE OUTPUT ${veldrin_include}/${header}
      CONTENT "#include \"${PROJECT_SOURCE_DIR}/${header}\"\n" @ONLY)
    if(VELDRIN_INSTALL)
      get_filename_component(folder ${header} DIRECTORY)
      install(FILES ${PROJECT_SOURCE_DIR}/${header}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/veldrin/${folder} ${veldrin_embedding})
    endif()
  endforeach()
  set_property(GLOBAL APPEND PROPERTY VELDRIN_PUBLIC_HEADERS ${headers})
endfunction()

# veldrin_embeddable(NAME HEADER...): the target veldrin_NAME is veldrin::NAME for others, and these headers
# come with it, and whatever they include.
function(veldrin_embeddable name)
  set(target veldrin_${name})
  add_library(veldrin::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name}
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF INSTALL_RPATH $ORIGIN)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${veldrin_include}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/veldrin>)
  veldrin_publish_headers(${ARGN})
  if(VELDRIN_INSTALL)
    set(export AmbrisorTargets)
    if(name STREQUAL "desktop")
      set(export AmbrisorDesktopTargets)
    endif()
    veldrin_install_library(${target} ${export})
  endif()
endfunction()

# A header that is public no more must not be found any longer.
function(veldrin_forget_old_headers)
  get_property(headers GLOBAL PROPERTY VELDRIN_PUBLIC_HEADERS)
  file(GLOB_RECURSE found RELATIVE ${veldrin_include} ${veldrin_include}/*.h)
  foreach(header IN LISTS found)
    if(NOT header IN_LIST headers)
      file(REMOVE ${veldrin_include}/${header})
    endif()
  endforeach()
endfunction()

# pkg-config knows its file's own place, and from there the way up to the prefix.
function(veldrin_install_pkg_config name)
  set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH up ${CMAKE_INSTALL_PREFIX}/${folder} ${CMAKE_INSTALL_PREFIX})
  string(REGEX REPLACE "/$" "" up ${up})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${folder} ${veldrin_embedding})
endfunction()

# To be called once, when all targets are there.
function(veldrin_finish_embedding)
  veldrin_forget_old_headers()
  if(NOT VELDRIN_INSTALL)
    return()
  endif()
  include(CMakePackageConfigHelpers)
  configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/AmbrisorConfig.cmake.in ${PROJECT_BINARY_DIR}/AmbrisorConfig.cmake
    INSTALL_DESTINATION ${veldrin_package_folder} NO_SET_AND_CHECK_MACRO)
  write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/AmbrisorConfigVersion.cmake COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/AmbrisorConfig.cmake ${PROJECT_BINARY_DIR}/AmbrisorConfigVersion.cmake
    DESTINATION ${veldrin_package_folder} ${veldrin_embedding})
  install(EXPORT AmbrisorTargets NAMESPACE veldrin::
    DESTINATION ${veldrin_package_folder} ${veldrin_embedding})
  veldrin_install_pkg_config(ambrisor)
  if(VELDRIN_DESKTOP)
    install(EXPORT AmbrisorDesktopTargets NAMESPACE veldrin::
      DESTINATION ${veldrin_package_folder} ${veldrin_embedding})
    veldrin_install_pkg_config(ambrisor-desktop)
  endif()
endfunction()
