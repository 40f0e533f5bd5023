#include "generatoroutputform.h"

#include <QAction>
#include <QDateTime>
#include <QDebug>
#include <QKeyEvent>
#include <QMenu>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QUrl>
#include <QVBoxLayout>

GeneratorOutputForm::GeneratorOutputForm(QWidget *parent)
    : QWidget(parent)
    , keywordTargets{
          {QStringLiteral("Limit Check"), QStringLiteral("Limit Check")},
          {QStringLiteral("Node-Id"), QStringLiteral("Node-Id")},
          {QStringLiteral("The manufacturer ID"), QStringLiteral("Manufacturer Code")},
          {QStringLiteral("Manufacturer code"), QStringLiteral("Manufacturer Code")},
          {QStringLiteral("bitwise mapping"), QStringLiteral("bitwise mapping")},
          {QStringLiteral("Identity number"), QStringLiteral("Identity number")},
          {QStringLiteral("Vehicle instance"), QStringLiteral("Vehicle instance")},
          {QStringLiteral("ECU instance"), QStringLiteral("ECU instance")},
          {QStringLiteral("Function instance"), QStringLiteral("Function instance")},
          {QStringLiteral("Industry Group"), QStringLiteral("Industy Group")},
      }
{
    setWindowTitle(tr("Form"));
    resize(400, 300);
    auto *layout = new QVBoxLayout(this);
    tbLogging = new QTextBrowser(this);
    tbLogging->setObjectName(QStringLiteral("tbLogging"));
    tbLogging->setReadOnly(true);
    tbLogging->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse |
                                       Qt::LinksAccessibleByKeyboard);
    tbLogging->setOpenLinks(false);
    tbLogging->setTabStopDistance(40);
    tbLogging->setContextMenuPolicy(Qt::CustomContextMenu);
    layout->addWidget(tbLogging);
    QMetaObject::connectSlotsByName(this);
}

void GeneratorOutputForm::clearLogging()
{
    tbLogging->clear();
    tbLogging->installEventFilter(this);
}

int GeneratorOutputForm::blockIndent(const QString &message)
{
    bool heading = false;
    if (message.contains(QLatin1String("Checking line"))) {
        static const QRegularExpression number(QStringLiteral("(-?\\d+(?:[\\.,]\\d+(?:e\\d+)?)?)"));
        const auto match = number.match(message);
        bool ok = false;
        const qint64 value = match.hasMatch() ? match.captured(0).toLongLong(&ok, 0) : 0;
        checkLine = ok ? qint8(value) : qint8(-1);
        heading = true;
    }
    int indent = 0;
    if (checkLine >= 0 && inCheck)
        indent = heading ? 0 : 20;
    if (message.contains(QLatin1String("Check of model consistency finished")))
        inCheck = false;
    else if (message.contains(QLatin1String("Check of model consistency started")))
        inCheck = true;
    return indent;
}

QString GeneratorOutputForm::withLinks(QString message) const
{
    if (message.contains(QLatin1String("Object 0x"))) {
        if (checkLine > 0) {
            const qsizetype at = message.indexOf(QLatin1String("Object 0x"));
            message.insert(qMax<qsizetype>(0, at - 1), QStringLiteral(" Line %1 - ").arg(checkLine));
        }
        const qsizetype start = message.indexOf(QLatin1String("0x"));
        qsizetype end = message.size();
        const qsizetype blank = message.indexOf(' ', start + 2);
        const qsizetype dash = message.indexOf('-', start + 2);
        if (blank >= 0)
            end = blank;
        if (dash >= 0 && dash < end)
            end = dash;
        const QString number = message.mid(start, end - start);
        bool ok = false;
        number.toUInt(&ok, 16);
        if (ok) {
            const qsizetype sub = message.indexOf(QLatin1String("-0x"), end);
            if (sub < 0) {
                message.insert(end, QStringLiteral("</a>"));
                message.insert(start, QStringLiteral("<a href=\"%2 - %1\">").arg(number).arg(checkLine));
            } else {
                const QString subText = message.mid(sub + 1, 4);
                message.insert(sub + 5, QStringLiteral("</a>"));
                message.insert(start, QStringLiteral("<a href=\"%3 - %1-%2\">").arg(number, subText).arg(checkLine));
            }
        }
    }
    for (auto it = keywordTargets.constBegin(); it != keywordTargets.constEnd(); ++it) {
        if (message.contains(it.key()))
            message.replace(it.key(), QStringLiteral("<a href=\"%1\">%2</a>").arg(it.value(), it.key()));
    }
    return message;
}

void GeneratorOutputForm::appendBlock(const QString &html, int indent)
{
    QTextCursor cursor(tbLogging->document());
    cursor.movePosition(QTextCursor::Start);
    tbLogging->append(html);
    cursor.movePosition(QTextCursor::End);
    QTextBlockFormat format = cursor.blockFormat();
    format.setLineHeight(3.0, QTextBlockFormat::LineDistanceHeight);
    format.setTextIndent(indent);
    cursor.setBlockFormat(format);
}

void GeneratorOutputForm::appendLogging(const QString &loggingString)
{
    const int indent = blockIndent(loggingString);
    QString message = loggingString;
    QString entry = QDateTime::currentDateTime().toString(Qt::TextDate) + QStringLiteral(": ");
    if (message.startsWith('\n')) {
        tbLogging->append(QString());
        message.remove(0, 1);
    }
    entry += withLinks(message);
    appendBlock(entry, indent);
}

void GeneratorOutputForm::appendPlainLogging(const QString &text)
{
    appendBlock(text, blockIndent(text));
}

QString GeneratorOutputForm::getLogging() const
{
    return tbLogging->toPlainText();
}

void GeneratorOutputForm::handleGotoRequest()
{
    if (auto *action = qobject_cast<QAction *>(sender()))
        emit gotoObject(0, ushort(action->data().toUInt()));
}

void GeneratorOutputForm::on_tbLogging_customContextMenuRequested(const QPoint &pos)
{
    QMenu *menu = tbLogging->createStandardContextMenu(pos);
    const QString selected = tbLogging->textCursor().selectedText();
    bool ok = false;
    uint number = 0;
    if (selected.startsWith(QLatin1String("0x")))
        number = selected.toUInt(&ok, 16);
    else if (selected.size() == 4)
        number = selected.toUInt(&ok, 16);
    else if (selected.size() >= 8)
        number = selected.left(4).toUInt(&ok, 16);
    if (ok) {
        QAction *action = menu->addAction(tr("Go to object 0x%1").arg(number & 0xFFFF, 4, 16, QChar('0')));
        action->setData(number & 0xFFFF);
        connect(action, &QAction::triggered, this, &GeneratorOutputForm::handleGotoRequest);
    }
    menu->exec(tbLogging->mapToGlobal(pos));
    delete menu;
}

void GeneratorOutputForm::on_tbLogging_anchorClicked(const QUrl &arg1)
{
    const QString text = arg1.toString();
    const QStringList parts = text.split('-', Qt::SkipEmptyParts);
    if (parts.size() < 2) {
        emit searchRequest(text);
        return;
    }
    const uchar line = uchar(parts.first().trimmed().toUInt(nullptr, 10));
    bool indexOk = false;
    if (parts.size() == 2) {
        const uint index = parts.last().trimmed().toUInt(&indexOk, 16);
        if (indexOk)
            emit gotoObject(line, ushort(index));
        else
            emit searchRequest(text);
        return;
    }
    const uint index = parts.at(1).trimmed().toUInt(&indexOk, 16);
    bool subOk = false;
    const uint subindex = parts.at(2).trimmed().toUInt(&subOk, 16);
    qDebug() << "Line:" << line << index << subindex;
    if (indexOk && subOk)
        emit goToSubobj(line, ushort(index), uchar(subindex));
    else if (indexOk)
        emit gotoObject(line, ushort(index));
    else
        emit searchRequest(text);
}

bool GeneratorOutputForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == tbLogging && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->modifiers() == Qt::ControlModifier) {
        tbLogging->copy();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
