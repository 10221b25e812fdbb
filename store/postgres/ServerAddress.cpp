#include "store/postgres/ServerAddress.h"

#include "store/ErrorSource.h"

#include <QRegularExpression>
#include <QUrl>
#include <algorithm>

namespace tallyroom {

namespace {

const QString scheme = QStringLiteral("postgresql://");

QRegularExpression wholly(const char16_t* pattern) {
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromUtf16(pattern)));
}

// The path as far as surely no secret stands in it: one follows a colon or lies in the parameters,
// and where the form is wrong, any "@" may end one.
QString withoutSecrets(const QString& path) {
    static const auto harmless =
        wholly(uR"([a-z]+://([^:/?@]*@)?([^:/?@]*|\[[0-9a-f:.]*\])(:\d*)?([/\\?][^@]*)?)");
    return harmless.match(path).hasMatch() ? path.section(u'?', 0, 0) : scheme + u'…';
}

RunError invalidPath(const QString& path) {
    return RunError::make(ErrorNumber::invalidPath, {withoutSecrets(path)}, ErrorSource::workspace);
}

RunError hasPassword(const QString& path) {
    return {ErrorNumber::invalidPath,
            QStringLiteral("'%1' is not a valid path: it must not contain a password. Keep the "
                           "password in the file .pgpass.")
                .arg(withoutSecrets(path)),
            ErrorSource::workspace};
}

// Decoded, as libpq does it.
QStringList parameterNames(const QString& parameters) {
    QStringList names;
    for (const QString& parameter : parameters.split(u'&', Qt::SkipEmptyParts))
        names << QUrl::fromPercentEncoding(parameter.section(u'=', 0, 0).toUtf8()).toLower();
    return names;
}

bool namesPassword(const QStringList& parameters) {
    return std::ranges::any_of(
        parameters, [](const QString& name) { return name.contains(QLatin1String("password")); });
}

const QString files[] = {QStringLiteral("bcx"), QStringLiteral("aidb01"),
                         QStringLiteral("vrlxdb01")};

QString schemaOf(const QString& site, const QString& file) {
    for (const QString& known : files) {
        if (file.compare(known + QStringLiteral(".mdb"), Qt::CaseInsensitive) == 0)
            return site.toLower() + u'_' + known;
    }
    return {};
}

} // namespace

bool isServerAddress(const QString& path) {
    return path.startsWith(scheme, Qt::CaseInsensitive) ||
           path.startsWith(QLatin1String("postgres://"), Qt::CaseInsensitive);
}

QString addressBeside(const QString& address, const QString& ending) {
    const QString place = address.section(u'?', 0, 0);
    const QString site = place.section(u'/', -1);
    return place.chopped(site.size()) + site.left(longestSite - ending.size()) + ending +
           address.mid(place.size());
}

QStringList schemasOf(const QString& site) {
    QStringList schemas;
    for (const QString& file : files)
        schemas << site.toLower() + u'_' + file;
    return schemas;
}

ServerAddress parseServerAddress(const QString& path) {
    // User, hosts with ports, database, site, parameters, file.
    static const auto form = wholly(
        uR"(postgres(?:ql)?://(([^@/?\\]*@)?(?:(?:\[[\dA-Fa-f:.]*\]|[^@/?\\:,]*)(?::\d*)?(?:,|(?=/)))+))"
        uR"(/([^@/?\\]+)/([A-Za-z0-9_-]+)(\?[^\\]*)?\\([^\\/]*))");
    const auto match = form.match(path);
    const QString parameters = match.captured(5);
    const QStringList names = parameterNames(parameters.mid(1));
    if (match.capturedView(2).contains(u':') || namesPassword(names))
        throw hasPassword(path);
    if (!match.hasMatch() || match.capturedView(4).size() > longestSite ||
        names.contains(QLatin1String("dbname")))
        throw invalidPath(path);
    const QString server = scheme + match.captured(1) + u'/' + match.captured(3);
    const QString site = match.captured(4);
    const QString file = match.captured(6);
    const QString schema = schemaOf(site, file);
    const QString shown = server + u'/' + site + u'\\' + file;
    if (schema.isEmpty())
        throw RunError::make(ErrorNumber::fileNotFound, {shown}, ErrorSource::workspace);
    return {server + parameters, site, schema, shown};
}

} // namespace tallyroom
