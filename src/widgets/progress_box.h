// The progress port: shows frmProgress while something long goes on.
#pragma once

#include "platform/ports.h"

#include <QObject>

#include <memory>

namespace kelvrane {

class frmProgress;

class ProgressBox : public QObject, public Progress {
    Q_OBJECT
  public:
    ProgressBox();
    ~ProgressBox() override;

    void show(const QString& caption) override;
    void setPercent(int percent) override;
    void close() override;
    bool isShown() const override { return bool(m_screen); }

    /// nullptr while nothing is shown.
    frmProgress* screen() const { return m_screen.get(); }

  private:
    struct DeleteLater {
        void operator()(frmProgress* screen) const;
    };
    std::unique_ptr<frmProgress, DeleteLater> m_screen;
};

} // namespace kelvrane
