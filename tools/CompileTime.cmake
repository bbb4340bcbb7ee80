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
