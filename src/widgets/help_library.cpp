#include "widgets/help_library.h"

#include "frame/help_file.h"
#include "frame/program_folder.h"
#include "platform/installed_files.h"
#include "platform/ports.h"
#include "platform/skip_errors.h"

#include <QDir>
#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpIndexModel>
#include <QHelpLink>
#include <QTextDocument>

namespace kelvrane {

namespace {

const QString Namespace = QStringLiteral("brindlemoor-ware.kelvrane");
constexpr char pageExtension[] = "htm";
const QString Root = QStringLiteral("qthelp://brindlemoor-ware.kelvrane/kelvrane/");

QUrl withoutPlace(const QUrl& address) {
    return address.adjusted(QUrl::RemoveFragment);
}

/// Entries before the chapters that hold them: a chapter may begin with its first entry's page.
QModelIndex placeBelow(const QHelpContentModel& model, const QModelIndex& parent,
                       const QUrl& address, bool withPlace) {
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (const QModelIndex below = placeBelow(model, index, address, withPlace); below.isValid())
            return below;
        const QUrl url = model.contentItemAt(index)->url();
        if ((withPlace ? url : withoutPlace(url)) == (withPlace ? address : withoutPlace(address)))
            return index;
    }
    return {};
}

} // namespace

HelpLibrary::HelpLibrary() {
    SkipErrors step(QStringLiteral("HelpLibrary"));
    step([] { RenewHelpFile(); });
    DropDamagedHelpCollection();
    if (open(HelpFilePath(), HelpCollectionPath()))
        return;
    DropHelpCollection();
    if (!open(HelpFilePath(), HelpCollectionPath()) && !openElsewhere())
        Raise(errors::FileNotFound,
              QStringLiteral("The help file %1 is missing or damaged. Installing Kelvrane again "
                             "puts it back.")
                  .arg(QDir::toNativeSeparators(HelpFilePath())));
}

HelpLibrary::~HelpLibrary() = default;

/// The program's folder may be full or read-only.
bool HelpLibrary::openElsewhere() {
    m_spare.emplace();
    const QString collection = m_spare->filePath(QStringLiteral("Kelvrane.qhc"));
    return open(HelpFilePath(), collection) ||
           open(InstalledFile(QString::fromLatin1(files::HelpFile)), collection);
}

bool HelpLibrary::open(const QString& file, const QString& collection) {
    m_engine.reset();
    if (!ports.files->exists(file) || QHelpEngineCore::namespaceName(file) != Namespace)
        return false;
    m_engine = std::make_unique<QHelpEngine>(collection);
    m_engine->setReadOnly(false);
    connect(m_engine->contentModel(), &QHelpContentModel::contentsCreated, this,
            &HelpLibrary::contentsReady);
    if (!m_engine->setupData())
        return false;
    if (QDir::cleanPath(m_engine->documentationFileName(Namespace)) != file) {
        m_engine->unregisterDocumentation(Namespace); // the folder has moved
        if (!m_engine->registerDocumentation(file))
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

QList<HelpText> HelpLibrary::readTexts() const {
    QList<HelpText> texts;
    for (const QUrl& page :
         m_engine->files(Namespace, QString(), QString::fromLatin1(pageExtension))) {
        QTextDocument reader; // without its pictures and style
        reader.setHtml(QString::fromUtf8(data(page)));
        texts.append({page, reader.metaInformation(QTextDocument::DocumentTitle),
                      reader.toPlainText().simplified()});
    }
    return texts;
}

QList<HelpHit> HelpLibrary::search(const QString& typed) {
    if (m_texts.isEmpty())
        m_texts = readTexts();
    return SearchHelp(m_texts, HelpSearchWords(typed));
}

} // namespace kelvrane
