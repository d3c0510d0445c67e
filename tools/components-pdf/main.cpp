// components-pdf PACKAGES OUT.pdf: writes the list of the components of others that go into Pendra: of the
// packages that it is built from those that hold libraries or fonts, with version, origin and licences.
#include <QFile>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <QTextDocument>
#include <cstdio>

namespace {

struct Component {
  QString package;
  QString version;
  QString homepage;
  QStringList licences;
};

QString readText(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The short names of the licences that a package's copyright file declares, in alphabetical order.
QStringList licencesOf(const QString& package) {
  static const QRegularExpression line(QStringLiteral("^License: *(\\S.*)$"),
                                       QRegularExpression::MultilineOption);
  QStringList licences;
  auto matches = line.globalMatch(readText(u"/usr/share/doc/" + package + u"/copyright"));
  while (matches.hasNext()) licences << matches.next().captured(1).trimmed();
  licences.removeDuplicates();
  licences.sort();
  return licences;
}

/// The packages of the list whose contents end up in the program; compilers and the like do not.
QList<Component> componentsOf(const QString& listPath) {
  QProcess query;
  query.start(QStringLiteral("dpkg-query"),
              QStringList{QStringLiteral("-W"), QStringLiteral("-f"),
                          QStringLiteral("${Package}\t${Version}\t${Section}\t${Homepage}\n")} +
                  readText(listPath).split(u'\n', Qt::SkipEmptyParts));
  query.waitForFinished();
  QList<Component> components;
  for (const QString& line :
       QString::fromUtf8(query.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts)) {
    const QStringList fields = line.split(u'\t');
    if (fields.size() < 4 || (fields[2] != u"libdevel" && fields[2] != u"fonts")) continue;
    components << Component{fields[0], fields[1], fields[3], licencesOf(fields[0])};
  }
  return components;
}

QString htmlOf(const Component& component) {
  return QStringLiteral(
             "<h3>%1 %2</h3><p><a href=\"%3\">%3</a><br>Licences: %4</p>"
             "<p class=\"small\">The full texts are in /usr/share/doc/%1/copyright.</p>")
      .arg(component.package.toHtmlEscaped(), component.version.toHtmlEscaped(),
           component.homepage.toHtmlEscaped(), component.licences.join(QStringLiteral(", ")).toHtmlEscaped());
}

void write(const QList<Component>& components, const QString& path) {
  QString html = QStringLiteral(
      "<h1>Third Party Components</h1><p>Pendra is made with the work of others. These are the components "
      "that it "
      "uses, as they were when it was built.</p>");
  for (const Component& component : components) html += htmlOf(component);
  QTextDocument document;
  document.setDefaultStyleSheet(QStringLiteral("h3 { margin-top: 14px; } .small { color: #6b7078; }"));
  document.setHtml(html);
  QPdfWriter writer(path);
  writer.setTitle(QStringLiteral("Third Party Components"));
  writer.setPageSize(QPageSize(QPageSize::A4));
  writer.setPageMargins({20, 20, 20, 20}, QPageLayout::Millimeter);
  document.print(&writer);
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() != 3) {
    std::fputs("usage: components-pdf PACKAGES OUT.pdf\n", stderr);
    return 2;
  }
  const auto components = componentsOf(arguments[1]);
  if (components.isEmpty()) {
    std::fputs("components-pdf: none of the packages is known to dpkg\n", stderr);
    return 1;
  }
  write(components, arguments[2]);
  return 0;
}
