#include "app/forms/acerca.h"

#include "app/DatosTecnicos.h"
#include "app/Modulo.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QApplication>
#include <QClipboard>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace app {

namespace {

QLabel *texto(const QString &que)
{
    auto *etiqueta = new QLabel(que);
    etiqueta->setTextFormat(Qt::PlainText);
    etiqueta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    etiqueta->setWordWrap(true);
    return etiqueta;
}

QGroupBox *grupo(const QString &titulo, const QVector<DatoTecnico> &datos)
{
    auto *caja = new QGroupBox(titulo);
    auto *renglones = new QFormLayout(caja);
    renglones->setHorizontalSpacing(2 * ui::margen);
    for (const DatoTecnico &dato : datos) {
        auto *valor = texto(dato.valor);
        valor->setMinimumWidth(260);
        renglones->addRow(dato.nombre, valor);
    }
    return caja;
}

} // namespace

acerca::acerca(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("acerca"), tr("Acerca de Vastelo"))
    , copiar(ui::boton(this, QStringLiteral("copiar"), tr("C&opiar datos técnicos"), QStringLiteral("edit-copy")))
    , cerrar(ui::boton(this, QStringLiteral("cerrar"), tr("&Cerrar"), QStringLiteral("dialog-close")))
{
    copiar->setToolTip(tr("Lo que conviene mandar al pedir ayuda. No lleva datos de pacientes."));

    auto *dibujo = new QLabel;
    dibujo->setPixmap(QApplication::windowIcon().pixmap(48));
    auto *nombre = texto(tr("Vastelo %1").arg(QLatin1String(Modulo::version)));
    QFont grande = nombre->font();
    grande.setPointSizeF(grande.pointSizeF() * 1.7);
    grande.setBold(true);
    nombre->setFont(grande);
    auto *letras = new QVBoxLayout;
    letras->addWidget(nombre);
    letras->addWidget(
        texto(tr("Sistema de gestión de consultorios: pacientes, historias clínicas, turnos, órdenes y caja.")));
    auto *arriba = new QHBoxLayout;
    arriba->setSpacing(2 * ui::margen);
    arriba->addWidget(dibujo, 0, Qt::AlignTop);
    arriba->addLayout(letras, 1);

    auto *abajo = new QHBoxLayout;
    abajo->addWidget(copiar);
    abajo->addStretch(1);
    abajo->addWidget(cerrar);

    auto *caja = new QVBoxLayout(this);
    caja->setSpacing(2 * ui::margen);
    caja->addLayout(arriba);
    caja->addWidget(grupo(tr("En uso"), datosDelSistema(entorno)));
    caja->addWidget(grupo(tr("Hecho con"), bibliotecas()));
    caja->addStretch(1);
    caja->addLayout(abajo);

    alPulsar(copiar, [this] {
        QApplication::clipboard()->setText(textoTecnico(this->entorno()));
        copiar->setText(tr("C&opiado"));
    });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
    cerrar->setFocus();
}

} // namespace app
