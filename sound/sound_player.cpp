#include "sound_player.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QSoundEffect>
#include <QUrl>

SoundPlayer::SoundPlayer() = default;
SoundPlayer::~SoundPlayer() = default;

void SoundPlayer::play(const QString& path) {
    if (QMediaDevices::defaultAudioOutput().isNull())
        return;
    const QUrl source = QUrl::fromLocalFile(path);
    if (path.endsWith(QLatin1String(".wav"), Qt::CaseInsensitive)) {
        if (!m_effect)
            m_effect = std::make_unique<QSoundEffect>();
        m_effect->setSource(source);
        m_effect->play();
        return;
    }
    if (!m_player) {
        m_player = std::make_unique<QMediaPlayer>();
        m_player->setAudioOutput(new QAudioOutput(m_player.get()));
    }
    m_player->setSource(source);
    m_player->play();
}

QObject* CreateSoundPlayer() {
    return new SoundPlayer;
}
