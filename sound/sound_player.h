// Plays sound files. The program loads the module, calls CreateSoundPlayer, owns what it returns,
// and calls the slot by its name.
#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QMediaPlayer;
class QSoundEffect;

class SoundPlayer : public QObject {
    Q_OBJECT
  public:
    SoundPlayer();
    ~SoundPlayer() override;

  public slots:
    /// Starts a file and returns at once; silent where there is no device.
    void play(const QString& path);

  private:
    std::unique_ptr<QSoundEffect> m_effect;
    std::unique_ptr<QMediaPlayer> m_player;
};

extern "C" Q_DECL_EXPORT QObject* CreateSoundPlayer();
