#pragma once

#include "printing/Paginas.h"

#include <QStringList>

/// The text of each page of a PDF, as a reader finds it, with its layout kept.
[[nodiscard]] QStringList paginasDelPdf(const QString &archivo);
/// The same of a document, written as a PDF first.
[[nodiscard]] QStringList textoImpreso(const printing::Documento &documento);
