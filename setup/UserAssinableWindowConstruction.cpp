// The part of the setup window that builds it.

#include "setup/SetupAccessibility.h"
#include "setup/SetupTables.h"
#include "setup/UserAssinableWindowController.h"
#include "shortcut/ClearButton.h"

#include <QApplication>

namespace kestrel {

UserAssinableWindowController::UserAssinableWindowController(const SetupServices& services)
    : m_services(services)
    , m_files(services.documentFiles)
    , m_fieldExit([this] {
        if (UserAssignableButton* const key = currentButton())
            key->setFocus(Qt::BacktabFocusReason);
    })
{
    const auto observe = [this](const QString& name, auto handler) {
        m_observations.push_back(m_services.interface.notificationCenter.addObserver(name,
            [this, handler](const Notification& notification) { (this->*handler)(notification); }));
    };
    using Self = UserAssinableWindowController;
    observe(NotificationName::windowWillClose, &Self::windowClosing);
    installSetupAccessibility();
    m_window = std::make_unique<SetupWindow>();
    m_window->setMouseDown([this] { mouseDown(); });
    m_placement = std::make_unique<SetupPlacement>(*m_window, m_services.defaults);
    m_window->setHiding([this] { m_placement->save(); });
    m_placement->restore();
    setupUserAssignableButtons();
    setupShortcutFields();
    setupLoadSaveButton();
    setupAssignOkCancelButton();
    setupReadingOrder();
    setupEngravings();
    QObject::connect(qApp, &QApplication::focusChanged, &m_focusWatch, [this] { refreshScene(); });
    observe(NotificationName::refreshShortcutName, &Self::userAssign);
    observe(NotificationName::hideUserAssignEditBox, &Self::hideUserAssignEditBoxNotify);
}

UserAssinableWindowController::~UserAssinableWindowController() = default;

void UserAssinableWindowController::setupUserAssignableButtons()
{
    const SetupTables& tables = SetupTables::shared();
    m_userAssignableButtons.clear();
    for (int index = 0; index < UserAssignFile::ButtonCount; ++index) {
        auto controller = std::make_unique<UserAssignableButtonController>(
            tables.inContent(tables.buttonFrame(index)), m_services.interface, m_window.get());
        controller->view()->setTag(index);
        controller->view()->setRenamed([this, number = index + 1](const QString& name) {
            m_workingSet.setName(number, name);
            refreshScene();
        });
        m_userAssignableButtons.push_back(std::move(controller));
        m_userAssignableButtons.back()->setCurrentButtonId(0);
    }
}

void UserAssinableWindowController::setupShortcutFields()
{
    const SetupTables& tables = SetupTables::shared();
    m_shortcutFields.clear();
    for (int index = 0; index < SetupTables::FieldCount; ++index) {
        m_shortcutFields.push_back(std::make_unique<ShortcutFieldController>(
            tables.inContent(tables.fieldFrame(index)), m_services.interface, m_window.get()));
        MyShortcutField* field = m_shortcutFields.back()->view();
        field->setTag(UserAssignFile::ButtonCount + index);
        field->setAccessibleName(QStringLiteral("Shortcut %1").arg(index + 1));
        field->installEventFilter(&m_fieldExit);
        setupClearButton(index);
    }
}

void UserAssinableWindowController::setupClearButton(int index)
{
    const SetupTables& tables = SetupTables::shared();
    MyShortcutField* field = getMyShortcutField(index);
    auto* clearButton = new ClearButton(
        tables.inContent(tables.clearButtonFrame(index)), m_services.interface, m_window.get());
    clearButton->setImage(tables.ClearButtonImage);
    clearButton->setAlternateImage(tables.ClearButtonOnPressImage);
    clearButton->setAccessibleName(QStringLiteral("Clear shortcut %1").arg(index + 1));
    clearButton->setMyShortcutfield(field);
    field->setMyClearButton(clearButton);
    field->setShortcutFields(&m_shortcutFields);
    field->setAction([this] { updateAssignButton(); });
}

void UserAssinableWindowController::setupLoadSaveButton()
{
    const SetupTables& tables = SetupTables::shared();
    const std::array names { QStringLiteral("Load"), QStringLiteral("Save") };
    const std::array loadSaveAction { &UserAssinableWindowController::load,
        &UserAssinableWindowController::save };
    for (std::size_t i = 0; i < loadSaveAction.size(); ++i) {
        ImageButton* button = m_loadSaveButtons[i] = addButton(tables.LoadSaveButtonFrame[i],
            names[i], tables.LoadSaveButtonOffImage[i], tables.LoadSaveButtonImage[i]);
        QObject::connect(button, &QAbstractButton::clicked, m_window.get(),
            [this, action = loadSaveAction[i]] { (this->*action)(); });
    }
}

void UserAssinableWindowController::setupAssignOkCancelButton()
{
    const SetupTables& tables = SetupTables::shared();
    const std::array names { QStringLiteral("Assign"), QStringLiteral("OK"),
        QStringLiteral("Cancel") };
    const std::array assignOkCancelAction { &UserAssinableWindowController::assign,
        &UserAssinableWindowController::ok, &UserAssinableWindowController::cancel };
    for (std::size_t i = 0; i < assignOkCancelAction.size(); ++i) {
        ImageButton* button = m_assignOkCancelButtons[i]
            = addButton(tables.AssignOkCancelButtonFrame[i], names[i],
                tables.AssignOkCancelButtonImage[i], tables.AssignOkCancelButtonOffImage[i]);
        QObject::connect(button, &QAbstractButton::clicked, m_window.get(),
            [this, action = assignOkCancelAction[i]] { (this->*action)(); });
    }
    assignButton()->setDisabledImage(tables.AssignButtonDisableImage);
}

// The order of construction decides which control lies above another. The eye goes from the top of
// the window to its bottom, and through all keys before it goes through the fields.
void UserAssinableWindowController::setupReadingOrder()
{
    const auto [load, save] = m_loadSaveButtons;
    const auto [assign, ok, cancel] = m_assignOkCancelButtons;
    std::vector<QWidget*> order { load, save };
    for (const auto& controller : m_userAssignableButtons)
        order.push_back(controller->view());
    for (const auto& controller : m_shortcutFields) {
        order.push_back(controller->view());
        order.push_back(controller->view()->myClearButton());
    }
    order.insert(order.end(), { assign, cancel, ok });
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

ImageButton* UserAssinableWindowController::addButton(const QRect& frame, const QString& name,
    const InterfaceImage& image, const InterfaceImage& alternateImage)
{
    auto* button = new ImageButton(SetupTables::shared().inContent(frame), m_window.get());
    button->setAccessibleName(name);
    button->setImage(image);
    button->setAlternateImage(alternateImage);
    return button;
}

void UserAssinableWindowController::setMyWindowController(WindowVisibility* panel)
{
    m_myWindowController = panel;
}

} // namespace kestrel
