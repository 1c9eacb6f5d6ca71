#pragma once

#include <QTextBrowser>

/// Shows a page in which a picture called "mark:N" is the mark of a setting with that number.
class HelpPage : public QTextBrowser
{
    Q_OBJECT

public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override;
};
