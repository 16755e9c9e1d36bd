# How the libraries of src/ are made: one per folder, rules without widgets, windows on top of them.

add_library(vastelo_opciones INTERFACE)
target_compile_options(vastelo_opciones INTERFACE
    -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    # Not where the program is only built to be used: each compiler and optimisation sees something else.
    $<$<BOOL:${VASTELO_TESTS}>:-Werror> -Winvalid-pch)
target_compile_definitions(vastelo_opciones INTERFACE
    QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(VASTELO_SANITIZE)
    target_compile_options(vastelo_opciones INTERFACE
        -fsanitize=${VASTELO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(vastelo_opciones INTERFACE -fsanitize=${VASTELO_SANITIZE})
endif()

# Two precompiled headers: the rules' one holds no widget header, so that a widget in a rule does not compile.
file(WRITE ${CMAKE_BINARY_DIR}/pch/vacio.cpp.nuevo "// owner of a precompiled header\n")
configure_file(${CMAKE_BINARY_DIR}/pch/vacio.cpp.nuevo ${CMAKE_BINARY_DIR}/pch/vacio.cpp COPYONLY)
add_library(vastelo_pch_reglas OBJECT ${CMAKE_BINARY_DIR}/pch/vacio.cpp)
target_link_libraries(vastelo_pch_reglas PUBLIC vastelo_opciones Qt6::Core)
target_precompile_headers(vastelo_pch_reglas PRIVATE
    <QString> <QStringList> <QVariant> <QDateTime> <QHash> <QVector> <QObject>
    <functional> <memory> <optional> <vector>)
set_target_properties(vastelo_pch_reglas PROPERTIES AUTOMOC OFF)

add_library(vastelo_pch_ventanas OBJECT ${CMAKE_BINARY_DIR}/pch/vacio.cpp)
target_link_libraries(vastelo_pch_ventanas PUBLIC vastelo_opciones Qt6::Core Qt6::Gui Qt6::Widgets)
target_precompile_headers(vastelo_pch_ventanas PRIVATE
    <QString> <QStringList> <QVariant> <QDateTime> <QHash> <QVector> <QObject>
    <QWidget> <QLabel> <QLineEdit> <QPushButton> <QComboBox> <QBoxLayout> <QFormLayout> <QGridLayout>
    <functional> <memory> <optional> <vector>)
set_target_properties(vastelo_pch_ventanas PROPERTIES AUTOMOC OFF)

# vastelo_examinar(<target> <sources>): CMake scans for moc when a file that it knows has changed; for one that was added
# or removed the scan has to be asked for, or an existing build folder does not build any more.
function(vastelo_examinar target)
    set(anotadas ${CMAKE_CURRENT_BINARY_DIR}/${target}_fuentes.txt)
    string(JOIN "\n" ahora ${ARGN})
    set(antes "")
    if(EXISTS ${anotadas})
        file(READ ${anotadas} antes)
    endif()
    if(NOT ahora STREQUAL antes)
        file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/timestamp)
        file(WRITE ${anotadas} "${ahora}")
    endif()
endfunction()

# vastelo_reglas(<name> [libraries...]): the .cpp and .h of the current folder, not of those below it.
function(vastelo_reglas name)
    file(GLOB fuentes CONFIGURE_DEPENDS *.cpp *.h)
    add_library(vastelo_${name} STATIC ${fuentes})
    target_include_directories(vastelo_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(vastelo_${name} PUBLIC vastelo_opciones Qt6::Core ${ARGN})
    target_precompile_headers(vastelo_${name} REUSE_FROM vastelo_pch_reglas)
    vastelo_examinar(vastelo_${name} ${fuentes})
endfunction()

# vastelo_ventanas(<name> [libraries...]): the same for a folder of windows.
function(vastelo_ventanas name)
    file(GLOB fuentes CONFIGURE_DEPENDS *.cpp *.h)
    add_library(vastelo_${name} STATIC ${fuentes})
    target_include_directories(vastelo_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(vastelo_${name} PUBLIC vastelo_opciones Qt6::Core Qt6::Gui Qt6::Widgets ${ARGN})
    target_precompile_headers(vastelo_${name} REUSE_FROM vastelo_pch_ventanas)
    vastelo_examinar(vastelo_${name} ${fuentes})
endfunction()
