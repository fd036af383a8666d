/// What the quick-add panel shows and does, for QML.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <functional>
#include <string>

namespace quillo {

/// One text at a time: typed, submitted or given up. Belongs to the main thread.
class QuickAddModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell hands it over.")

    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(bool locked READ locked NOTIFY lockedChanged)

public:
    /// Takes what was submitted: UTF-8, trimmed, not empty.
    using Submission = std::function<void(std::string)>;

    explicit QuickAddModel(Submission submission);

    QString text() const { return text_; }

    /// Changes nothing while locked.
    void setText(const QString& text);

    /// Nothing can be typed: what was is submitted.
    bool locked() const { return locked_; }

    /// Starts anew: nothing of what was typed before is left.
    void begin();

    /// Return: hands the text on, which is gone from here at once, so that it cannot be handed on twice.
    /// Either way the panel has done its work.
    Q_INVOKABLE void submit();

    /// Escape.
    Q_INVOKABLE void cancel();

    /// The panel is being dragged by its background.
    Q_INVOKABLE void move();

Q_SIGNALS:
    void textChanged();
    void lockedChanged();
    void begun();
    void finished();
    void moveRequested();

private:
    void replaceText(const QString& text);
    void setLocked(bool locked);

    const Submission submission_;
    QString text_;
    bool locked_ = false;
};

} // namespace quillo
