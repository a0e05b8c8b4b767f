# The Windows installer: `cmake --build build --target package` writes
# build/Zorvel-<version>-win64.exe with CPack's NSIS generator (makensis from
# Debian's nsis package), from cmake/NSIS.template.in.
#
# Installed into the program folder: the program, zvl, the language and
# image modules and the icons. The templates and the sample lists are placed
# by the installer itself (ZvSamples.nsh, written here): both screen variants
# of each, named as the program's first start expects them.

set(ZV_BIN ${CMAKE_BINARY_DIR}/bin)
install(TARGETS Zorvel zvl RUNTIME DESTINATION .)
install(FILES ${ZV_BIN}/LangEng.dll ${ZV_BIN}/LangGer.dll ${ZV_BIN}/ZVLowDpiRes.dll ${ZV_BIN}/ZVHighDpiRes.dll
  DESTINATION .)
install(DIRECTORY ${ZV_BIN}/Icons DESTINATION . FILES_MATCHING PATTERN "*.tga")

# NSIS macros naming every sample: ZvInstallSamples (File commands, both
# variants), ZvRecordTemplates and ZvRemoveShippedTemplates (per template).
set(ZV_NSIS_SAMPLES ${CMAKE_BINARY_DIR}/ZvSamples.nsh)
get_property(zv_sample_names GLOBAL PROPERTY ZV_SAMPLE_NAMES)
set(install_lines "")
set(record_lines "")
set(remove_lines "")
set(last_folder "")
foreach(rel ${zv_sample_names})
  get_filename_component(dir ${rel} DIRECTORY)
  get_filename_component(file ${rel} NAME)
  if(dir MATCHES "^lists/(.*)$")
    string(REPLACE "/" "\\" folder "$ListsDir\\${CMAKE_MATCH_1}")
  else()
    set(folder "$INSTDIR\\Templates")
    string(APPEND record_lines "  !insertmacro ZvRecordTemplate \"${file}\"\n")
    string(APPEND remove_lines "  !insertmacro ZvRemoveShippedTemplate \"${file}\"\n")
  endif()
  if(NOT folder STREQUAL last_folder)
    string(APPEND install_lines "  SetOutPath \"${folder}\"\n")
    set(last_folder "${folder}")
  endif()
  foreach(variant vga qvga)
    string(APPEND install_lines "  File \"/oname=${file}_${variant}\" \"${ZV_BIN}/samples/${variant}/${dir}/${file}\"\n")
  endforeach()
endforeach()
file(WRITE ${ZV_NSIS_SAMPLES}
  "; Made by cmake/Installer.cmake from samples/.\n"
  "!macro ZvInstallSamples\n${install_lines}  SetOutPath \"$INSTDIR\"\n!macroend\n"
  "!macro ZvRecordTemplates\n${record_lines}!macroend\n"
  "!macro ZvRemoveShippedTemplates\n${remove_lines}!macroend\n")

set(CPACK_GENERATOR NSIS)
set(CPACK_PACKAGE_NAME Zorvel)
set(CPACK_PACKAGE_VENDOR Quenta)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME Zorvel-${PROJECT_VERSION}-win64)
set(CPACK_NSIS_EXECUTABLES_DIRECTORY .)
set(CPACK_NSIS_ZV_SAMPLES ${ZV_NSIS_SAMPLES})
set(CPACK_NSIS_ZV_ICON ${CMAKE_BINARY_DIR}/art/zorvel.ico)
set(CPACK_STRIP_FILES ON)
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_SOURCE_DIR}/cmake)
include(CPack)
