#include "forms/ToolTip.h"

#include <QTextDocument>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// What an author sees of a tool tip, which Qt shows as it shows the text of a label.
QString Seen(const QString& toolTip) {
    if (!Qt::mightBeRichText(toolTip))
        return toolTip;
    QTextDocument document;
    document.setHtml(toolTip);
    return document.toPlainText().remove(QChar(0x200B));
}

TEST(ToolTip, ShowsEveryTextAsItStands) {
    for (const char* text : {"msg <Dust.>", "/home/ann/a<b>c/x.kel", "if a < b & c > d", "&lt; stays",
                             "say \"no\"", "two  blanks", "first line\nsecond <i>line</i>", "plain"})
        EXPECT_EQ(Seen(ToolTipOf(QString::fromLatin1(text))).toStdString(), text);
    EXPECT_EQ(ToolTipOf({}), "") << "there is none then";
    EXPECT_LT(ToolTipOf(QString(1000000, u'<')).size(), 30000);
}

} // namespace
} // namespace zem::test
