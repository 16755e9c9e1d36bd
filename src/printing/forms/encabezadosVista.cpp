// How the window "encabezados" is laid out.

#include "printing/forms/encabezados.h"
#include "ui/BarraFormato.h"
#include "ui/Botones.h"
#include "ui/EditorTexto.h"
#include "ui/Estilo.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace printing {

void encabezados::construir()
{
    barra = new ui::BarraFormato(this);
    encabezadogeneral = new ui::EditorTexto(QStringLiteral("encabezadogeneral"), this, barra);
    encabezadopaciente = new ui::EditorTexto(QStringLiteral("encabezadopaciente"), this, barra);
    QWidget *general = grupo(tr("Encabezado &general"), encabezadogeneral, marcadoresGenerales());
    QWidget *paciente = grupo(tr("Encabezado del &paciente"), encabezadopaciente, marcadoresPaciente());
    QWidget *dibujo = panelImagen();
    vistaprevia
        = ui::boton(this, QStringLiteral("vistaprevia"), tr("&Vista previa"), QStringLiteral("document-print-preview"));
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    guardar->setText(tr("G&uardar"));
    cancelar = fin.cancelar;
    fin.fila->insertWidget(0, vistaprevia);

    auto *editores = new QVBoxLayout;
    editores->setSpacing(ui::espacio);
    editores->addWidget(barra);
    editores->addWidget(general, 1);
    editores->addWidget(paciente, 1);
    auto *columnas = new QHBoxLayout;
    columnas->setSpacing(ui::margen);
    columnas->addLayout(editores, 1);
    columnas->addWidget(dibujo);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addLayout(columnas, 1);
    todo->addLayout(fin.fila);
    setMinimumSize(860, 520);
    resize(960, 600);

    // What is written first, then what formats it.
    QWidget *anterior = encabezadogeneral;
    for (QWidget *uno : std::initializer_list<QWidget *>{
             general->findChild<QWidget *>(QStringLiteral("marcador_medico")),
             encabezadopaciente,
             paciente->findChild<QWidget *>(QStringLiteral("marcador_apellido")),
             encabezadoimagen,
             insertarimagen,
             borrarimagen}) {
        QWidget::setTabOrder(anterior, uno);
        anterior = uno;
    }
}

QWidget *encabezados::grupo(const QString &titulo, ui::EditorTexto *editor, const QVector<Marcador> &marcadores)
{
    auto *caja = new QWidget(this);
    auto *rotulo = new QLabel(titulo, caja);
    QFont negrita = rotulo->font();
    negrita.setBold(true);
    rotulo->setFont(negrita);
    rotulo->setBuddy(editor);
    auto *fila = new QHBoxLayout;
    fila->setSpacing(3);
    fila->addWidget(new QLabel(tr("Insertar:"), caja));
    for (const Marcador &marcador : marcadores) {
        const QString escrito = u'<' + marcador.clave + u'>';
        auto *boton = new QPushButton(marcador.significado, caja);
        boton->setObjectName(QStringLiteral("marcador_") + marcador.clave);
        boton->setToolTip(tr("Inserta %1, que al imprimir se reemplaza por el dato").arg(escrito));
        boton->setAutoDefault(false);
        connect(boton, &QPushButton::clicked, editor, [editor, escrito] { editor->insertar(escrito); });
        fila->addWidget(boton);
    }
    fila->addStretch(1);
    auto *columna = new QVBoxLayout(caja);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(3);
    columna->addWidget(rotulo);
    columna->addWidget(editor, 1);
    columna->addLayout(fila);
    return caja;
}

QWidget *encabezados::panelImagen()
{
    auto *caja = new QGroupBox(tr("Imagen"), this);
    imagen = new QLabel(caja);
    imagen->setObjectName(QStringLiteral("imagen"));
    imagen->setFrameShape(QFrame::StyledPanel);
    imagen->setAlignment(Qt::AlignCenter);
    imagen->setFixedSize(210, 150);
    imagen->setAutoFillBackground(true);
    QPalette papel = imagen->palette();
    papel.setColor(QPalette::Window, Qt::white);
    papel.setColor(QPalette::WindowText, QColor(0x70, 0x78, 0x80));
    imagen->setPalette(papel);
    encabezadoimagen = new QCheckBox(tr("Usar en las impre&siones"), caja);
    encabezadoimagen->setObjectName(QStringLiteral("encabezadoimagen"));
    insertarimagen
        = ui::boton(caja, QStringLiteral("insertarimagen"), tr("&Insertar..."), QStringLiteral("insert-image"));
    borrarimagen = ui::boton(caja, QStringLiteral("borrarimagen"), tr("&Eliminar"), QStringLiteral("edit-delete"));
    auto *columna = new QVBoxLayout(caja);
    columna->setSpacing(ui::espacio);
    columna->addWidget(imagen);
    columna->addWidget(encabezadoimagen);
    columna->addWidget(insertarimagen);
    columna->addWidget(borrarimagen);
    columna->addStretch(1);
    return caja;
}

} // namespace printing
