// Printers for real, a PDF file among them.
#pragma once

#include "platform/ports.h"

#include <memory>

class QPrinter;

namespace kelvrane {

class QtPrinter : public Printer {
  public:
    QtPrinter();
    ~QtPrinter() override;
    bool choose(const QString& title) override;
    bool print(const QString& title, const std::function<void(QPagedPaintDevice&)>& paint) override;

  private:
    std::unique_ptr<QPrinter> m_printer; ///< the one chosen last; none before the first
};

class MountedVolumes : public Volumes {
  public:
    QStringList roots() const override;
};

} // namespace kelvrane
