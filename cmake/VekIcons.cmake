# vek_icons(target): puts the toolbar icons into a Qt target as :/icons/light/NAME.svg and :/icons/dark/NAME.svg,
# and the program's own icon as :/icons/vorn-matrix-editor.svg.
#
# Each icon is drawn once, in the two colours below. The light rendering is the drawing itself; the dark one is made
# here with the colours for dark palettes.

set(VEK_ICONS new open save saveas print text csv export default link base online download about)
set(VEK_ICON_INK "#1b1b1b")
set(VEK_ICON_ACCENT "#1f66d1")
set(VEK_ICON_DARK_INK "#e8e8e8")
set(VEK_ICON_DARK_ACCENT "#7cb4ff")

function(vek_icons target)
    set(folder ${PROJECT_SOURCE_DIR}/src/editor/icons)
    set(program_icon ${PROJECT_SOURCE_DIR}/packaging/icons/vorn-matrix-editor.svg)
    foreach(icon IN LISTS VEK_ICONS)
        set(name ${icon}.svg)
        set(drawing ${folder}/${name})
        set(dark ${CMAKE_CURRENT_BINARY_DIR}/icons/dark/${name})
        file(READ ${drawing} text)
        string(REPLACE ${VEK_ICON_INK} ${VEK_ICON_DARK_INK} text "${text}")
        string(REPLACE ${VEK_ICON_ACCENT} ${VEK_ICON_DARK_ACCENT} text "${text}")
        file(CONFIGURE OUTPUT ${dark} CONTENT "${text}" @ONLY)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${drawing})
        set_source_files_properties(${drawing} PROPERTIES QT_RESOURCE_ALIAS light/${name})
        set_source_files_properties(${dark} PROPERTIES QT_RESOURCE_ALIAS dark/${name})
        list(APPEND files ${drawing} ${dark})
    endforeach()
    set_source_files_properties(${program_icon} PROPERTIES QT_RESOURCE_ALIAS vorn-matrix-editor.svg)
    qt_add_resources(${target} ${target}_icons PREFIX /icons OPTIONS -no-compress FILES ${files} ${program_icon})
endfunction()
