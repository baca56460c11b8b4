# What `cmake --install` puts where on Linux; the Windows package is made by tools/windows/package. The programs find
# everything beside themselves, in the build folder as in an installed system: so they stand in a folder of their own with
# links to the data, and the system's folder of programs has links to them.
if(WIN32)
  return()
endif()
include(GNUInstallDirs)
set(home ${CMAKE_INSTALL_PREFIX}/lib/tallyscope)
set(share ${CMAKE_INSTALL_DATADIR})
set(linux ${PROJECT_SOURCE_DIR}/data/linux)

install(TARGETS tallyscope tallyscope-report tallyscope-volume Volindex Colophon
  RUNTIME DESTINATION lib/tallyscope LIBRARY DESTINATION lib/tallyscope)
set_target_properties(tallyscope tallyscope-report PROPERTIES INSTALL_RPATH ${home})
install(DIRECTORY data/Toolbox_Language DESTINATION ${share}/tallyscope)
install(FILES data/DownloadApplication.linux.xml DESTINATION ${share}/tallyscope RENAME DownloadApplication.xml)

# install_link(TARGET LINK): a link that stays right wherever the prefix is.
function(install_link target link)
  cmake_path(GET link PARENT_PATH folder)
  file(RELATIVE_PATH relative /${folder} /${target})
  install(CODE "
    set(link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${link}\")
    cmake_path(GET link PARENT_PATH folder)
    file(MAKE_DIRECTORY \"\${folder}\")
    file(CREATE_LINK \"${relative}\" \"\${link}\" SYMBOLIC)")
endfunction()
install_link(${share}/tallyscope/Toolbox_Language lib/tallyscope/Toolbox_Language)
install_link(${share}/tallyscope/DownloadApplication.xml lib/tallyscope/DownloadApplication.xml)
install_link(lib/tallyscope/tallyscope ${CMAKE_INSTALL_BINDIR}/tallyscope)
install_link(lib/tallyscope/tallyscope-report ${CMAKE_INSTALL_BINDIR}/tallyscope-report)

# The desktop's view of the program.
install(FILES ${linux}/tallyscope.desktop DESTINATION ${share}/applications)
configure_file(${linux}/tallyscope.metainfo.xml.in tallyscope.metainfo.xml @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tallyscope.metainfo.xml DESTINATION ${share}/metainfo)
install(FILES data/art/tallyscope.svg DESTINATION ${share}/icons/hicolor/scalable/apps)
foreach(size IN ITEMS 16 32 48 64 128 256)
  install(FILES data/art/png/tallyscope${size}.png
    DESTINATION ${share}/icons/hicolor/${size}x${size}/apps RENAME tallyscope.png)
endforeach()
install(FILES data/art/png/tallyscope256@2x.png
  DESTINATION ${share}/icons/hicolor/512x512/apps RENAME tallyscope.png)

# What the system asks before tallyscope-volume runs as the administrator.
configure_file(${linux}/tallyscope.policy.in tallyscope.policy @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tallyscope.policy
  DESTINATION ${share}/polkit-1/actions RENAME example.tallyscope.policy)

# The shells'.
foreach(program IN ITEMS tallyscope tallyscope-report)
  install(FILES ${linux}/completions/${program}.bash
    DESTINATION ${share}/bash-completion/completions RENAME ${program})
  install(FILES ${linux}/completions/${program}.zsh
    DESTINATION ${share}/zsh/vendor-completions RENAME _${program})
  install(FILES ${linux}/completions/${program}.fish DESTINATION ${share}/fish/vendor_completions.d)
endforeach()

# The manual pages say what the programs' own --help says. Made where help2man is, as in every package.
find_program(HELP2MAN help2man)
if(HELP2MAN)
  foreach(program IN ITEMS tallyscope tallyscope-report)
    set(page ${CMAKE_CURRENT_BINARY_DIR}/${program}.1)
    add_custom_command(OUTPUT ${page}
      COMMAND ${HELP2MAN} --no-info --include ${linux}/${program}.h2m --output ${page} $<TARGET_FILE:${program}>
      DEPENDS ${program} ${linux}/${program}.h2m
      COMMENT "Writing the manual page of ${program}")
    list(APPEND pages ${page})
  endforeach()
  add_custom_target(manual_pages DEPENDS ${pages})
  install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 OPTIONAL)
endif()
