# Where everything goes when it is installed.
#
# All programs lie in one folder of their own, and what they look for beside themselves is there as
# links: the settings, which an administrator changes, come from the system's folder for
# configuration, skins and languages from the shared data.
include(GNUInstallDirs)

set(QUORLIN_HOME "lib/quorlin")
set(QUORLIN_SHARED "${CMAKE_INSTALL_DATADIR}/quorlin")
set(QUORLIN_CONFIGURATION "${CMAKE_INSTALL_FULL_SYSCONFDIR}/quorlin")
set(packaging "${PROJECT_SOURCE_DIR}/packaging/linux")

# quorlin_install_link(LINK TARGET): a symbolic link, named from the prefix, to what the target says.
function(quorlin_install_link link target)
  install(CODE "
    set(link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${link}\")
    message(STATUS \"Installing: \${link}\")
    get_filename_component(folder \"\${link}\" DIRECTORY)
    file(MAKE_DIRECTORY \"\${folder}\")
    file(CREATE_LINK \"${target}\" \"\${link}\" SYMBOLIC)")
endfunction()

set(commands quorlin quorlin-convert quorlin-pdf quorlin-settings quorlin-skin)
set(workers quorlin-pdf-office quorlin-pdf-print quorlin-pdf-merge quorlin-svg)
install(TARGETS ${commands} ${workers} RUNTIME DESTINATION "${QUORLIN_HOME}")
# All that is needed to run the programs and to install them: a third of the whole build.
add_custom_target(quorlin_programs DEPENDS ${commands} ${workers} quorlin_data)
foreach(command IN LISTS commands)
  quorlin_install_link("${CMAKE_INSTALL_BINDIR}/${command}" "../${QUORLIN_HOME}/${command}")
endforeach()

install(FILES "${PROJECT_SOURCE_DIR}/data/Quorlin.ini" DESTINATION "${QUORLIN_CONFIGURATION}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/data/Settings" DESTINATION "${QUORLIN_CONFIGURATION}"
        FILES_MATCHING PATTERN "*.joboptions")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/data/language" DESTINATION "${QUORLIN_SHARED}"
        FILES_MATCHING PATTERN "*.slg")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/data/skins" DESTINATION "${QUORLIN_SHARED}"
        FILES_MATCHING PATTERN "Info.ssk" PATTERN "*.png" PATTERN "sources" EXCLUDE)
foreach(name IN ITEMS Quorlin.ini Settings)
  quorlin_install_link("${QUORLIN_HOME}/${name}"
    "${QUORLIN_CONFIGURATION}/${name}")
endforeach()
foreach(name IN ITEMS skins language)
  quorlin_install_link("${QUORLIN_HOME}/${name}" "../../${QUORLIN_SHARED}/${name}")
endforeach()

# The desktop: the menu, the software centre, icons, and the menus of file managers.
install(DIRECTORY "${packaging}/applications/" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications"
        FILES_MATCHING PATTERN "*.desktop")
install(DIRECTORY "${packaging}/metainfo/" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo"
        FILES_MATCHING PATTERN "*.metainfo.xml")
install(DIRECTORY "${packaging}/icons/hicolor" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons"
        FILES_MATCHING PATTERN "*.png" PATTERN "*.svg")
install(FILES "${PROJECT_SOURCE_DIR}/src/ui/resources/quorlin.svg"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
install(DIRECTORY "${packaging}/kio/" DESTINATION "${CMAKE_INSTALL_DATADIR}/kio/servicemenus"
        FILES_MATCHING PATTERN "*.desktop")
install(FILES "${packaging}/nautilus/quorlin_nautilus.py"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/nautilus-python/extensions")
install(DIRECTORY "${packaging}/nemo/" DESTINATION "${CMAKE_INSTALL_DATADIR}/nemo/actions"
        FILES_MATCHING PATTERN "*.nemo_action")
install(DIRECTORY "${packaging}/thunar/" DESTINATION "${CMAKE_INSTALL_DATADIR}/Thunar/sendto"
        FILES_MATCHING PATTERN "*.desktop")

# Manuals, and completion for the shells; the folders are those of Debian's shells.
foreach(section IN ITEMS 1 5)
  install(DIRECTORY "${packaging}/man/" DESTINATION "${CMAKE_INSTALL_MANDIR}/man${section}"
          FILES_MATCHING PATTERN "*.${section}")
endforeach()
install(DIRECTORY "${packaging}/completion/bash/"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
install(DIRECTORY "${packaging}/completion/zsh/"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions")
install(DIRECTORY "${packaging}/completion/fish/"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")

# The guides, and documents to try. What somebody else may have put beside them stays out.
set(documents "${CMAKE_INSTALL_DATADIR}/doc/quorlin")
install(FILES "${PROJECT_SOURCE_DIR}/CHANGELOG.md" DESTINATION "${documents}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs/" DESTINATION "${documents}"
        FILES_MATCHING PATTERN "*.md" PATTERN "*.schema.json" PATTERN "pictures/*.png")
set(examples "Grüße aus Thistlemere.odt" "Harvest 2025.xlsx" "Meadow.png" "Membership.pdf"
    "Seed labels.ps" "Spring Fair.pptx" "Thistlemere Handbook.docx")
list(TRANSFORM examples PREPEND "${PROJECT_SOURCE_DIR}/examples/")
install(FILES ${examples} DESTINATION "${documents}/examples")
