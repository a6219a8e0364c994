#include "widgets/help_library.h"

#include "frame/help_file.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"

#include <QDir>
#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpIndexModel>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QHelpSearchResult>
#include <QRegularExpression>
#include <QSet>

#include <utility>

namespace kelvrane {

namespace {

const QString Namespace = QStringLiteral("brindlemoor-ware.kelvrane");
const QString Root = QStringLiteral("qthelp://brindlemoor-ware.kelvrane/kelvrane/");
constexpr int mostHits = 60;

QUrl withoutPlace(const QUrl& address) {
    return address.adjusted(QUrl::RemoveFragment);
}

/// In the search's own language each word stands for itself: "and" and "*" as well.
QString asQuery(const QString& words) {
    static const QRegularExpression noWord(QStringLiteral("[^\\w]+"),
                                           QRegularExpression::UseUnicodePropertiesOption);
    QStringList quoted;
    for (const QString& word : words.split(noWord, Qt::SkipEmptyParts))
        quoted.append(u'"' + word + u'"');
    return quoted.isEmpty() ? QString() : quoted.join(u' ') + u'*';
}

QString plain(QString snippet) {
    static const QRegularExpression mark(QStringLiteral("</?b>"));
    return snippet.remove(mark).simplified();
}

QModelIndex placeBelow(const QHelpContentModel& model, const QModelIndex& parent,
                       const QUrl& address, bool withPlace) {
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QUrl url = model.contentItemAt(index)->url();
        if ((withPlace ? url : withoutPlace(url)) == (withPlace ? address : withoutPlace(address)))
            return index;
        if (const QModelIndex below = placeBelow(model, index, address, withPlace); below.isValid())
            return below;
    }
    return {};
}

} // namespace

HelpLibrary::HelpLibrary() {
    SkipErrors step(QStringLiteral("HelpLibrary"));
    step([] { RenewHelpFile(); });
    DropDamagedHelpCollection();
    if (open())
        return;
    DropHelpCollection();
    if (!open())
        Raise(errors::FileNotFound,
              QStringLiteral("The help file %1 is missing or damaged. Installing Kelvrane again "
                             "puts it back.")
                  .arg(QDir::toNativeSeparators(HelpFilePath())));
}

HelpLibrary::~HelpLibrary() = default;

bool HelpLibrary::open() {
    m_engine.reset();
    if (!ports.files->exists(HelpFilePath()) ||
        QHelpEngineCore::namespaceName(HelpFilePath()) != Namespace)
        return false;
    m_engine = std::make_unique<QHelpEngine>(HelpCollectionPath());
    m_engine->setReadOnly(false);
    QHelpSearchEngine* search = m_engine->searchEngine(); // from now on it follows the collection
    connect(m_engine->contentModel(), &QHelpContentModel::contentsCreated, this,
            &HelpLibrary::contentsReady);
    connect(search, &QHelpSearchEngine::indexingFinished, this,
            [this] { this->search(std::exchange(m_words, {})); });
    connect(search, &QHelpSearchEngine::searchingFinished, this, &HelpLibrary::takeResults);
    if (!m_engine->setupData())
        return false;
    if (QDir::cleanPath(m_engine->documentationFileName(Namespace)) != HelpFilePath()) {
        m_engine->unregisterDocumentation(Namespace); // the folder has moved
        if (!m_engine->registerDocumentation(HelpFilePath()))
            return false;
    }
    return true;
}

QUrl HelpLibrary::pageAddress(const QString& page) const {
    const QUrl address(Root + page);
    return !page.isEmpty() && has(address) ? address : QUrl();
}

QUrl HelpLibrary::contentsPage() const {
    return contentsAddress(contents()->index(0, 0));
}

bool HelpLibrary::has(const QUrl& address) const {
    return !data(address).isEmpty();
}

QByteArray HelpLibrary::data(const QUrl& address) const {
    if (address.scheme() != u"qthelp")
        return {};
    return m_engine->fileData(withoutPlace(address));
}

QAbstractItemModel* HelpLibrary::contents() const {
    return m_engine->contentModel();
}

QUrl HelpLibrary::contentsAddress(const QModelIndex& index) const {
    const QHelpContentItem* item = m_engine->contentModel()->contentItemAt(index);
    return index.isValid() && item ? item->url() : QUrl();
}

QModelIndex HelpLibrary::contentsPlace(const QUrl& address) const {
    const QHelpContentModel& model = *m_engine->contentModel();
    const QModelIndex exact = placeBelow(model, {}, address, true);
    return exact.isValid() ? exact : placeBelow(model, {}, address, false);
}

QAbstractItemModel* HelpLibrary::index() const {
    return m_engine->indexModel();
}

QList<HelpLink> HelpLibrary::pagesOf(const QString& keyword) const {
    QList<HelpLink> pages;
    for (const QHelpLink& link : m_engine->documentsForKeyword(keyword))
        pages.append({link.url, link.title});
    return pages;
}

void HelpLibrary::search(const QString& words) {
    m_words = words;
    const QString query = asQuery(words);
    if (query.isEmpty())
        emit found({});
    else
        m_engine->searchEngine()->search(query);
}

void HelpLibrary::takeResults() {
    QList<HelpHit> hits;
    QSet<QUrl> seen;
    for (const QHelpSearchResult& result : m_engine->searchEngine()->searchResults(0, mostHits)) {
        if (seen.contains(result.url()))
            continue;
        seen.insert(result.url());
        hits.append({result.url(), result.title(), plain(result.snippet())});
    }
    emit found(hits);
}

} // namespace kelvrane
