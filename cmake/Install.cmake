# The library alone is installed for those who embed it; the host comes along when it was built.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(promptercore_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/PrompterCore)
install(TARGETS PrompterCore EXPORT PrompterCoreTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT PrompterCoreTargets NAMESPACE PrompterCore:: DESTINATION ${promptercore_config_dir})
configure_package_config_file(cmake/PrompterCoreConfig.cmake.in
  ${PROJECT_BINARY_DIR}/PrompterCoreConfig.cmake INSTALL_DESTINATION ${promptercore_config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/PrompterCoreConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/PrompterCoreConfig.cmake
              ${PROJECT_BINARY_DIR}/PrompterCoreConfigVersion.cmake
        DESTINATION ${promptercore_config_dir})
if(PROMPTERCORE_BUILD_HOST)
  install(TARGETS varnelle)
  install(DIRECTORY examples/sample DESTINATION ${CMAKE_INSTALL_DATADIR}/varnelle
          PATTERN make-voice EXCLUDE)
endif()
