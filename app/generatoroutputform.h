#pragma once

#include <QMap>
#include <QWidget>

class QTextBrowser;
class QUrl;

// The page "Generator Output": the log of a run, with the objects and settings its messages name as links.
class GeneratorOutputForm : public QWidget
{
    Q_OBJECT

public:
    explicit GeneratorOutputForm(QWidget *parent = nullptr);

    // The plain append of entries without time stamp and links.
    void appendPlainLogging(const QString &text);
    QTextBrowser *logView() const { return tbLogging; }

signals:
    void gotoObject(uchar line, ushort index);
    void goToSubobj(uchar line, ushort index, uchar subindex);
    void searchRequest(QString searchString);

public slots:
    void clearLogging();
    void appendLogging(const QString &loggingString);
    QString getLogging() const;
    void handleGotoRequest();
    void on_tbLogging_customContextMenuRequested(const QPoint &pos);
    void on_tbLogging_anchorClicked(const QUrl &arg1);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int blockIndent(const QString &message);
    QString withLinks(QString message) const;
    void appendBlock(const QString &html, int indent);

    QTextBrowser *tbLogging = nullptr;
    QMap<QString, QString> keywordTargets;
    qint8 checkLine = 0;
    bool inCheck = false;
};
