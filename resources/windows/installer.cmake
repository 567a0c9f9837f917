# What CorvanelSetup.exe puts into the program folder, and how that is made.
install(TARGETS corvanel corvanel-console corvanel-sound DESTINATION .)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/resources/sounds/ DESTINATION . FILES_MATCHING PATTERN "*.wav")
install(FILES ${CMAKE_SOURCE_DIR}/resources/sounds.txt "${CMAKE_SOURCE_DIR}/resources/Timer Manual.pdf"
              ${CMAKE_SOURCE_DIR}/LICENSE ${CMAKE_CURRENT_LIST_DIR}/Libraries.txt DESTINATION .)
foreach(licence GPL-3 LGPL-3)
  install(FILES /usr/share/common-licenses/${licence} DESTINATION . RENAME ${licence}.txt)
endforeach()

set(CPACK_GENERATOR NSIS)
set(CPACK_PACKAGE_NAME Corvanel)
set(CPACK_PACKAGE_VENDOR "The Corvanel team")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME CorvanelSetup)
set(CPACK_STRIP_FILES ON)
# NSIS.template.in beside this file.
set(CPACK_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})
set(CPACK_NSIS_MUI_ICON ${CMAKE_SOURCE_DIR}/resources/icons/corvanel.ico)
include(CPack)
