# The application's icon in the sizes of the hicolor theme, drawn by a small program of ours from the SVG.
set(QUILLET_ICON_SIZES 16 22 24 32 48 64 128 256 512)

add_executable(quillet-make-icons icons/make_icons.cpp)
target_link_libraries(quillet-make-icons PRIVATE Qt6::Svg Qt6::Gui quillet_flags)

set(drawing ${CMAKE_CURRENT_SOURCE_DIR}/icons/org.quillet.Quillet.svg)
set(icons_folder ${CMAKE_BINARY_DIR}/icons/hicolor)
set(icons)
foreach(size ${QUILLET_ICON_SIZES})
  list(APPEND icons ${icons_folder}/${size}x${size}/apps/org.quillet.Quillet.png)
endforeach()
add_custom_command(OUTPUT ${icons}
  COMMAND quillet-make-icons ${drawing} ${icons_folder} org.quillet.Quillet ${QUILLET_ICON_SIZES}
  DEPENDS quillet-make-icons ${drawing}
  COMMENT "Drawing the application's icons" VERBATIM)
add_custom_target(quillet_icons ALL DEPENDS ${icons})
add_dependencies(quillet quillet_icons)
