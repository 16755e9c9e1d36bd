#include "printing/Hoja.h"

#include <QLocale>
#include <QPageSize>

namespace printing {

namespace {

constexpr double minimo = 20;

/// Upright, of any paper.
QPageSize papelDe(const Hoja &hoja)
{
    switch (hoja.papel) {
    case Papel::A4: return QPageSize(QPageSize::A4);
    case Papel::A5: return QPageSize(QPageSize::A5);
    case Papel::Carta: return QPageSize(QPageSize::Letter);
    case Papel::Oficio: return QPageSize(QPageSize::Legal);
    case Papel::Otro: break;
    }
    // Beyond these a typing mistake would ask for a sheet that no memory holds.
    const QSizeF lados(qBound(30.0, hoja.propia.width(), 2000.0), qBound(30.0, hoja.propia.height(), 2000.0));
    return QPageSize(lados, QPageSize::Millimeter, QStringLiteral("Otro"), QPageSize::ExactMatch);
}

/// Both sides of a pair, made smaller alike where they leave less than the minimum of `largo`.
void estrechar(double largo, double &uno, double &otro)
{
    uno = qMax(0.0, uno);
    otro = qMax(0.0, otro);
    const double suma = uno + otro, cabe = largo - minimo;
    if (suma > cabe) {
        uno *= cabe / suma;
        otro *= cabe / suma;
    }
}

} // namespace

QSizeF Hoja::tamano() const
{
    const QSizeF parado = papelDe(*this).size(QPageSize::Millimeter);
    return apaisada ? parado.transposed() : parado;
}

QRectF Hoja::interior() const
{
    const QSizeF todo = tamano();
    double izquierda = margenes.left(), derecha = margenes.right(), arriba = margenes.top(), abajo = margenes.bottom();
    estrechar(todo.width(), izquierda, derecha);
    estrechar(todo.height(), arriba, abajo);
    return {QPointF(izquierda, arriba), QPointF(todo.width() - derecha, todo.height() - abajo)};
}

QPageLayout Hoja::pagina() const
{
    QPageLayout pagina(
        papelDe(*this),
        apaisada ? QPageLayout::Landscape : QPageLayout::Portrait,
        QMarginsF(),
        QPageLayout::Millimeter);
    pagina.setMode(QPageLayout::FullPageMode);
    return pagina;
}

QString Hoja::nombre() const
{
    static const QString nombres[]
        = {QStringLiteral("A4"),
           QStringLiteral("A5"),
           QStringLiteral("Carta"),
           QStringLiteral("Oficio"),
           QStringLiteral("Otro")};
    const QSizeF lados = papelDe(*this).size(QPageSize::Millimeter);
    return QStringLiteral("%1 (%2 × %3 mm)")
        .arg(nombres[int(papel)])
        .arg(qRound(lados.width()))
        .arg(qRound(lados.height()));
}

} // namespace printing
