# What keeps the time short from a clone to the open window.

# Headers that most files include, read once for each library and test program and not once for each file: reading them is
# half of what a form takes to compile. They are the system's only, so that no change of a header of ours compiles
# everything anew.
set(zem_std_headers
    <algorithm> <array> <cstddef> <cstdint> <filesystem> <functional> <iterator> <limits> <map> <memory> <optional>
    <stdexcept> <string> <string_view> <unordered_map> <unordered_set> <utility> <vector>)
set(zem_qt_headers
    <QAction> <QApplication> <QCheckBox> <QComboBox> <QDialog> <QDir> <QFileInfo> <QGridLayout> <QGroupBox> <QKeyEvent>
    <QLabel> <QLineEdit> <QListView> <QListWidget> <QMessageBox> <QPushButton> <QString> <QTextEdit> <QTimer>
    <QVBoxLayout> <QVariant>)

# zem_precompile(TARGET [HEADER...]): the standard library's headers and these. A file still includes what it uses.
function(zem_precompile target)
    target_precompile_headers(${target} PRIVATE ${zem_std_headers} ${ARGN})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -fpch-preprocess) # lets a compiler cache see the headers
    endif()
endfunction()

# The same for a library that is compiled as another one is: what was read for that one serves both. The other compiler
# insists on the very same options, which the fuzz targets' are not.
function(zem_precompile_as target other)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_precompile_headers(${target} REUSE_FROM ${other})
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    else()
        zem_precompile(${target})
    endif()
endfunction()

# Forms wait for people and files; a third of the compiler's time for them goes into making them faster still.
function(zem_optimise_less target)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
endfunction()

# What the tests run for minutes under the sanitizers.
function(zem_optimise_sanitized target)
    target_compile_options(${target} PRIVATE $<$<BOOL:${ZEM_SANITIZE}>:-O1>)
endfunction()

# Tests run once for each time that they are compiled; what they test is as fast as ever.
function(zem_optimise_not target)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
endfunction()

# zem_moc(TARGET FOLDER...): what Qt's signals and slots need, of every header in these folders of src, as one file. The
# headers are read for themselves and not with all of Qt's that they include, which is what CMake's own rule spends
# half a minute on. Called from a folder other than the target's, or its commands would wait for the libraries of the target.
function(zem_moc target)
    set(folder_of_all ${CMAKE_CURRENT_BINARY_DIR}/${target})
    set(outputs)
    set(includes "")
    foreach(folder ${ARGN})
        file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.h)
        file(MAKE_DIRECTORY ${folder_of_all}/${folder})
        foreach(header ${headers})
            get_filename_component(name ${header} NAME_WE)
            set(output ${folder_of_all}/${folder}/${name}.cpp)
            add_custom_command(OUTPUT ${output}
                COMMAND Qt6::moc --no-notes -p ${folder} -o ${output} ${header} DEPENDS ${header} VERBATIM)
            list(APPEND outputs ${output})
            string(APPEND includes "#include \"${folder}/${name}.cpp\"\n")
        endforeach()
    endforeach()
    add_custom_target(${target}_moc DEPENDS ${outputs})
    add_dependencies(${target} ${target}_moc)

    set(all ${folder_of_all}/all.cpp)
    file(CONFIGURE OUTPUT ${all} CONTENT "${includes}" @ONLY)
    set_source_files_properties(${all} TARGET_DIRECTORY ${target}
        PROPERTIES OBJECT_DEPENDS "${outputs}" SKIP_UNITY_BUILD_INCLUSION ON)
    target_sources(${target} PRIVATE ${all})
endfunction()
