#include "support/SettableAppearance.h"
#include "ui/theme/Theme.h"
#include "ui/windows/MakeWindow.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStringList>
#include <map>
#include <memory>

namespace quillo {
namespace {

void collectTexts(const QQuickItem& item, std::map<double, QString>& texts) {
    const QString text = item.property("text").toString();
    if (item.isVisible() && !text.isEmpty())
        texts[item.mapToScene({}).x()] = text;
    for (const QQuickItem* child : item.childItems())
        collectTexts(*child, texts);
}

/// What is read in the item, from the left to the right.
QStringList textsFromTheLeft(const QQuickItem& item) {
    std::map<double, QString> texts;
    collectTexts(item, texts);
    QStringList read;
    for (const auto& [left, text] : texts)
        read.append(text);
    return read;
}

struct TimeFieldTest : testing::TestWithParam<const char*> {
    void SetUp() override {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        Theme::setInstance(&theme);
        prepareEngine(engine);
    }
    void TearDown() override {
        Theme::setInstance(nullptr);
        QLocale::setDefault(before);
    }

    const QLocale before;
    support::SettableAppearance settings;
    Theme theme{settings};
    QQmlEngine engine;
    QQuickWindow window;
};

TEST_P(TimeFieldTest, ATimeIsReadFromTheLeft) {
    QQmlComponent component(&engine);
    component.setData(QByteArray("import QtQuick\nimport Quillo\nItem {\n"
                                 "    LayoutMirroring.enabled: ") +
                          GetParam() +
                          "\n    LayoutMirroring.childrenInherit: true\n    width: 200\n    height: 40\n"
                          "    TimeField { value: new Date(2026, 10, 23, 18, 5) }\n}",
                      QUrl());
    const std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem*>(component.create()));
    ASSERT_TRUE(item) << component.errorString().toStdString();
    item->setParentItem(window.contentItem());
    window.show();
    for (QQuickItem* child : item->findChildren<QQuickItem*>())
        child->ensurePolished();
    EXPECT_EQ(textsFromTheLeft(*item), QStringList({"6", ":", "05", "PM"}));
}

INSTANTIATE_TEST_SUITE_P(EitherDirection, TimeFieldTest, testing::Values("false", "true"));

} // namespace
} // namespace quillo
