#pragma once

#include "assign/WorkingSet.h"
#include "common/NotificationCenter.h"
#include "setup/AssignmentFiles.h"
#include "setup/FieldExit.h"
#include "setup/SetupPlacement.h"
#include "setup/SetupServices.h"
#include "setup/SetupWindow.h"
#include "setup/UnassignedKeys.h"
#include "setup/UserAssignableButtonController.h"
#include "shortcut/ShortcutFieldController.h"

namespace kestrel {

class ImageButton;
class InterfaceImage;
class WindowVisibility;

// The "User Assignable Setup" window. It edits a working copy of the assignment set. OK writes the
// copy into the live set; every other way of closing the window discards it.
class UserAssinableWindowController {
public:
    explicit UserAssinableWindowController(const SetupServices& services);
    ~UserAssinableWindowController();
    UserAssinableWindowController(const UserAssinableWindowController&) = delete;
    UserAssinableWindowController& operator=(const UserAssinableWindowController&) = delete;

    void setMyWindowController(WindowVisibility* panel); // the plug-in panel; not owned
    void initShortcut(std::shared_ptr<UserAssignFile> live); // shared with the application
    void setupUI(const UserAssignFile& set); // takes the set and shows it in the fields
    void setupShortcut(const UserAssignFile& set); // takes the set as the working copy
    // Writes the working copy and the names into the set, and shows them again.
    void changeShortcut(UserAssignFile& set);

    [[nodiscard]] bool isVisible() const { return m_window->isVisible(); }
    void showWindow(); // at its last place
    void makeKeyAndOrderFront();
    [[nodiscard]] SetupWindow* window() const { return m_window.get(); }

    void assign();
    void ok();
    void cancel();
    void load();
    void save();
    // Returns false and changes nothing if the file is no assignment file.
    bool loadFile(const QString& path, bool bSetupUI);
    void updateAssignButton();
    void mouseDown(); // the user has clicked the background
    void windowClosing(const Notification& notification);
    void userAssign(const Notification& notification); // another button was selected
    void hideUserAssignEditBoxNotify(const Notification& notification);

    // Copies the record at the offset. See copyShortcutRecord() for sources that are too short.
    static void copyShortcutData(
        std::size_t offset, const ButtonEntry& srcArry, const ButtonEntry& dstArray);
    void refreshShortcutText();
    void setFocusShortcutText();
    void hiddenShortcutText();
    void refreshNotAvailableTitle();
    void enabledAssignButton();
    void closeDialog();
    void setOriginalShortcut();
    void hideUserAssignEditBox();
    [[nodiscard]] MyShortcutField* getMyShortcutField(int index) const; // null beyond the fields

    // The entries of the working copy. Null before the first set was taken.
    [[nodiscard]] const auto& myShortcutArray() const { return m_workingSet.myShortcutArray(); }
    [[nodiscard]] const auto& userAssignableButtons() const { return m_userAssignableButtons; }
    [[nodiscard]] const ShortcutFields& shortcutFields() const { return m_shortcutFields; }
    [[nodiscard]] ImageButton* assignButton() const { return m_assignOkCancelButtons[0]; }
    [[nodiscard]] bool visibleFileDialog() const { return m_visibleFileDialog; }
    void setVisibleFileDialog(bool visible) { m_visibleFileDialog = visible; }
    [[nodiscard]] bool bOKclose() const { return m_bOKclose; }

private:
    void setupUserAssignableButtons();
    void setupShortcutFields();
    void setupClearButton(int index);
    void setupLoadSaveButton();
    void setupAssignOkCancelButton();
    void setupReadingOrder();
    void setupEngravings();
    ImageButton* addButton(const QRect& frame, const QString& name, const InterfaceImage& image,
        const InterfaceImage& alternateImage);

    [[nodiscard]] UserAssignableButton* button(int index) const;
    [[nodiscard]] UserAssignableButton* currentButton() const; // null if none is selected
    [[nodiscard]] ButtonEntry currentEntry() const; // null if the working copy has none
    void showWorkingSet(); // on the buttons
    void showInvalidFileAlert();
    void refreshScene();
    void refreshMarks();

    SetupServices m_services;
    AssignmentFiles m_files;
    QString m_sheetFolder; // of the last sheet
    std::unique_ptr<SetupPlacement> m_placement; // the window saves its place when it goes
    std::unique_ptr<SetupWindow> m_window; // owns the controls; the controllers go before it
    std::shared_ptr<UserAssignFile> m_myUserAssignFile;
    WorkingSet m_workingSet;
    UnassignedKeys m_unassigned;
    WindowVisibility* m_myWindowController = nullptr;
    std::vector<std::unique_ptr<UserAssignableButtonController>> m_userAssignableButtons;
    ShortcutFields m_shortcutFields;
    std::array<ImageButton*, 2> m_loadSaveButtons {};
    std::array<ImageButton*, 3> m_assignOkCancelButtons {};
    bool m_visibleFileDialog = false;
    bool m_bOKclose = false; // once true it stays true
    std::vector<NotificationCenter::Observation> m_observations;
    FieldExit m_fieldExit;
    QObject m_focusWatch;
};

} // namespace kestrel
