#include "shortcut/FieldGroup.h"

#include "tests/shortcut/FieldBench.h"

namespace kestrel::test {
namespace {

TEST(FieldGroup, controllers_register_when_made_and_leave_when_destroyed)
{
    FieldGroup& group = FieldGroup::sharedInstance();
    ASSERT_EQ(group.fieldControllers().size(), 0U);
    {
        FieldBench bench;
        ASSERT_EQ(group.fieldControllers().size(), 4U);
        EXPECT_EQ(group.fieldControllers().front(), bench.fields.front().get());
        bench.fields.front().reset();
        EXPECT_EQ(group.fieldControllers().size(), 3U);
        EXPECT_EQ(group.fieldControllers().front(), bench.fields[1].get());
    }
    EXPECT_EQ(group.fieldControllers().size(), 0U);
}

TEST(FieldGroup, the_current_field_stays_0_whatever_is_set)
{
    EXPECT_EQ(ShortcutFieldController::currentFieldId(), 0);
    ShortcutFieldController::setCurrentFieldId(3);
    EXPECT_EQ(ShortcutFieldController::currentFieldId(), 0);
}

TEST(FieldGroup, the_list_of_controllers_can_be_replaced)
{
    FieldBench bench;
    FieldGroup& group = FieldGroup::sharedInstance();
    const auto former = group.fieldControllers();
    group.setFieldControllers({});
    EXPECT_EQ(group.fieldControllers().size(), 0U);
    group.setFieldControllers(former);
}

TEST(ShortcutFieldController, its_view_is_a_field_with_its_frame_that_dies_with_it)
{
    NotificationCenter center;
    FakeKeyTranslation translation;
    auto controller = std::make_unique<ShortcutFieldController>(
        QRect(430, 104, 171, 34), InterfaceServices { center, translation });
    const QPointer<MyShortcutField> view = controller->view();
    EXPECT_EQ(view->geometry(), QRect(430, 104, 171, 34));
    controller.reset();
    EXPECT_TRUE(view.isNull());
}

TEST(ShortcutFieldController, it_outlives_the_window_that_its_view_is_in)
{
    NotificationCenter center;
    FakeKeyTranslation translation;
    auto window = std::make_unique<QWidget>();
    ShortcutFieldController controller(
        QRect(0, 0, 9, 9), InterfaceServices { center, translation }, window.get());
    window.reset();
    EXPECT_EQ(controller.view(), nullptr);
}

} // namespace
} // namespace kestrel::test
