// The menu bar's menus that every session has: File (with Quit at its end) and Help. Other
// parts of the program add their items to these menus or add menus of their own.
#pragma once

class QMenu;
class QMenuBar;

namespace lumidot {

class MainForm;

struct ProgramMenus {
    QMenu* file;
    QMenu* help;
};

// Fills window's menu bar; the File menu ends with a separator and "Quit".
ProgramMenus AddProgramMenus(MainForm& window);

}  // namespace lumidot
