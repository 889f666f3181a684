// The menu bar's menus that every session has: File (with Quit at its end) and Help. Other
// parts of the program add their items to these menus or add menus of their own.
#pragma once

class QAction;
class QMenu;
class QMenuBar;

namespace lumidot {

class MainForm;

struct ProgramMenus {
    QMenu* file;
    // The separator before "Quit": the File menu's other items go above it
    // (file->insertAction(fileEnd, action)).
    QAction* fileEnd;
    QMenu* help;  // last on the bar: other menus go before it (insertMenu(help->menuAction(), ...))
};

// Fills window's menu bar; the File menu ends with a separator and "Quit".
ProgramMenus AddProgramMenus(MainForm& window);

}  // namespace lumidot
