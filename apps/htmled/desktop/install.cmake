# What a desktop knows a program by: its entry, icon and catalogue data, man pages and completion.
set(desktop ${CMAKE_CURRENT_LIST_DIR})
install(FILES ${desktop}/org.tvxhtml.htmled.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${desktop}/org.tvxhtml.htmled.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${desktop}/org.tvxhtml.htmled.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${desktop}/htmled.1 ${desktop}/htmled-cli.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
foreach(program htmled htmled-cli)
  install(FILES ${desktop}/htmled.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ${program})
endforeach()
