// The network for real: each request is carried out by the helper program kelvrane-transfer, in a
// process of its own that ends with this one.
#pragma once

#include "platform/internet.h"

#include <QObject>

namespace kelvrane {

/// Patience, and whom to trust. Only tests choose otherwise.
struct TransferSettings {
    int connectSeconds = 20;
    int stallSeconds = 30;        ///< without any progress
    int quietSeconds = 15;        ///< a quiet request in all
    int quietMilliseconds = 2000; ///< before a quiet request begins: the start goes first
    QString certificates = {};    ///< file with the trusted ones; "": those of the system
};

class TransferInternet : public QObject, public Internet {
    Q_OBJECT
  public:
    explicit TransferInternet(TransferSettings settings = {}, QObject* parent = nullptr);
    /// Ends what is under way and doesn't wait for any server.
    ~TransferInternet() override;

    void fetch(const InternetRequest& request, OnStatus onStatus, OnResult onResult) override;
    void cancelAll() override;

  private:
    TransferSettings m_settings;
};

} // namespace kelvrane
