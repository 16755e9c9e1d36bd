#include "agenda/forms/BotonesLista.h"

#include "ui/Botones.h"
#include "ui/Grilla.h"
#include "ui/Ventana.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPushButton>

namespace agenda {

namespace {

QString tr(const char *texto) { return QCoreApplication::translate("BotonesLista", texto); }

} // namespace

void ponerBotonesLista(ui::Ventana &ventana, ui::Grilla &lista, QHBoxLayout &fila)
{
    const auto poner = [&](const char *nombre, const QString &texto, const char *icono, const QString &ayuda) {
        QPushButton *boton = ui::boton(&ventana, QLatin1String(nombre), texto, QLatin1String(icono), ayuda);
        fila.addWidget(boton);
        return boton;
    };
    QPushButton *copiar = poner("copiarlista", tr("&Copiar"), "edit-copy", tr("Copiar la lista al portapapeles"));
    QPushButton *exportar
        = poner("exportarlista", tr("E&xportar"), "document-export", tr("Guardar la lista como planilla (CSV)"));
    QPushButton *imprimir = poner("imprimir", tr("&Imprimir"), "document-print", tr("Imprimir la lista (Ctrl+P)"));
    QObject::connect(copiar, &QPushButton::clicked, &ventana, [&] { ventana.copiar(lista, false); });
    QObject::connect(exportar, &QPushButton::clicked, &ventana, [&] { ventana.exportar(lista); });
    QObject::connect(imprimir, &QPushButton::clicked, &ventana, [&] { ventana.imprimirLista(lista); });
    const auto habilitar = [&ventana, &lista, copiar, exportar, imprimir] {
        const bool hay = lista.modelo().rowCount() > 0;
        copiar->setEnabled(hay);
        exportar->setEnabled(hay);
        imprimir->setEnabled(hay && ventana.puedeImprimirLista());
    };
    QObject::connect(&lista.modelo(), &QAbstractItemModel::modelReset, &ventana, habilitar);
    habilitar();
}

} // namespace agenda
