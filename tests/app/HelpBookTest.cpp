// A help book with a dead link sends people away at the moment when they need it.
#include <gmock/gmock.h>

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>

#include "CommandTable.h"
#include "support/TestPlaces.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/ShellCommands.h"

namespace pendra {
namespace {

class HelpBook : public testing::Test {
 protected:
  QStringList valuesOf(const char* attribute) const {
    QStringList values;
    const QRegularExpression pattern(QString("\\s%1=\"([^\"]*)\"").arg(attribute));
    for (auto matches = pattern.globalMatch(text_); matches.hasNext();) values << matches.next().captured(1);
    return values;
  }

  const QString page_ = QUrl(helpAddress(QStringLiteral(PENDRA_RESOURCES), {})).toLocalFile();
  const QString text_ = QString::fromUtf8(contentsOf(page_));
  const QStringList anchors_ = valuesOf("id");
};

TEST_F(HelpBook, EveryWindowAndMenuItemHasItsAnchor) {
  QStringList missing;
  QStringList wanted = help::kAll;
  wanted << help::anchorOfItem(0, QString::fromUtf8(kOpenRecentTitle));
  for (const Menu& menu : allMenus()) {
    for (const CommandRow& row : menu.rows) {
      wanted << help::anchorOfItem(row.tag, QString::fromUtf8(row.title));
    }
  }
  for (const QString& anchor : wanted) {
    if (!anchors_.contains(anchor)) missing << anchor;
  }
  EXPECT_THAT(missing, testing::IsEmpty());
  EXPECT_GT(wanted.size(), help::kAll.size());
}

TEST_F(HelpBook, AnchorsAreUnique) {
  EXPECT_EQ(QSet<QString>(anchors_.begin(), anchors_.end()).size(), anchors_.size());
}

TEST_F(HelpBook, EveryLinkLeadsSomewhereInTheBook) {
  QStringList dead;
  const QStringList links = valuesOf("href");
  for (const QString& link : links) {
    const bool leads = link.startsWith(u'#') && anchors_.contains(link.mid(1));
    if (!leads) dead << link;
  }
  EXPECT_THAT(dead, testing::IsEmpty());
  EXPECT_GT(links.size(), 20);
}

TEST_F(HelpBook, EveryPictureIsThereAndDescribed) {
  QStringList missing;
  const QStringList pictures = valuesOf("src") + valuesOf("srcset");
  for (const QString& picture : pictures) {
    if (!QFileInfo::exists(QFileInfo(page_).path() + u'/' + picture)) missing << picture;
  }
  EXPECT_THAT(missing, testing::IsEmpty());
  EXPECT_EQ(valuesOf("src").size(), valuesOf("alt").size());
  EXPECT_GT(pictures.size(), 20);
  const QStringList shown = valuesOf("src");
  for (qsizetype at = 0; at < shown.size(); ++at) {
    const QSizeF size = QImage(QFileInfo(page_).path() + u'/' + shown[at]).size();
    const QSizeF room(valuesOf("width")[at].toInt(), valuesOf("height")[at].toInt());
    EXPECT_NEAR(size.width() / room.width(), size.height() / room.height(), 0.01) << shown[at].toStdString();
  }
}

}  // namespace
}  // namespace pendra
