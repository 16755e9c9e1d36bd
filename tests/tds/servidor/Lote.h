#pragma once

#include <QString>
#include <QStringList>

namespace tds {

/// The statements of a batch: separated by ";", or each begun by a word that begins statements on a line of its own.
/// What stands between BEGIN and END (of a block or a CASE), in brackets, quotes and comments is one.
[[nodiscard]] QStringList sentenciasDe(const QString &lote);

/// Puts "?" for @P1, @P2... outside quotes; `orden` tells which parameter each is, counted from 0.
[[nodiscard]] QString conSignos(const QString &sentencia, QVector<int> &orden);

} // namespace tds
