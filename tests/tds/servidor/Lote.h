#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>

namespace tds {

/// The statements of a batch: separated by ";", or each begun by a word that begins statements on a line of its own.
/// What stands between BEGIN and END (of a block or a CASE), in brackets, quotes and comments is one.
[[nodiscard]] QStringList sentenciasDe(const QString &lote);

/// Puts "?" for @P1, @P2... and for bytes (0x00FF) outside quotes; `suyos` gets the value of each.
[[nodiscard]] QString conSignos(const QString &sentencia, const QVariantList &parametros, QVariantList &suyos);

} // namespace tds
