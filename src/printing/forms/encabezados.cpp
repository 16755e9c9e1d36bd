#include "printing/forms/encabezados.h"

#include "base/Clock.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "printing/Documento.h"
#include "printing/ImagenEncabezado.h"
#include "printing/forms/Ver.h"
#include "ui/EditorTexto.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

namespace printing {

encabezados::encabezados(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("encabezados"), tr("Encabezados de las impresiones"))
{
    construir();
    alPulsar(insertarimagen, [this] { insertarImagen(); });
    alPulsar(borrarimagen, [this] { borrarImagen(); });
    alPulsar(vistaprevia, [this] { mostrarMuestra(); });
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool encabezados::preparar(const ui::Pedido &pedido)
{
    const int administrador = pedido.datos.value(QStringLiteral("administrador")).toInt();
    if (!aceptado(db::controlarConfiguracion(entorno(), administrador)))
        return false;
    m_administrador = administrador;
    const PlantillasEncabezado leidas = leerPlantillas(conexion());
    encabezadogeneral->setHtml(leidas.general);
    encabezadopaciente->setHtml(leidas.paciente);
    encabezadoimagen->setChecked(leidas.imagen);
    m_guardadas = escritas();
    ponerRotuloId();
    mostrarImagen();
    encabezadogeneral->setFocus();
    return true;
}

bool encabezados::hayCambios() const { return escritas() != m_guardadas; }

QString encabezados::ayuda() const
{
    return tr(
        "ENCABEZADO GENERAL: Sale arriba en todas las hojas que se imprimen. Los botones insertan el nombre, la"
        " especialidad y la matrícula del profesional activo; se reemplazan al imprimir.\n\n"
        "ENCABEZADO DEL PACIENTE: Sale debajo del anterior en lo que se imprime de un paciente, con sus datos.\n\n"
        "IMAGEN: Se guarda en la carpeta Imagenes del programa de esta computadora; en una red hay que insertarla en"
        " cada una. Una imagen ancha ocupa todo el ancho de la hoja; otra, la izquierda.\n\n"
        "VISTA PREVIA: Muestra una hoja de ejemplo con lo que está escrito, aunque todavía no se haya guardado.");
}

PlantillasEncabezado encabezados::escritas() const
{
    return {encabezadoimagen->isChecked(), encabezadogeneral->html(), encabezadopaciente->html()};
}

void encabezados::ponerRotuloId()
{
    const QString propio = db::Config(conexion()).texto(u"reemplazoid").trimmed();
    if (auto *boton = findChild<QPushButton *>(QStringLiteral("marcador_id")); boton && !propio.isEmpty())
        boton->setText(QString(propio).replace(u'&', QStringLiteral("&&")));
}

void encabezados::mostrarImagen()
{
    const QImage actual = imagenDe(leerImagen(entorno()));
    m_hayImagen = !actual.isNull();
    if (m_hayImagen)
        imagen->setPixmap(QPixmap::fromImage(
            actual.scaled(imagen->contentsRect().size(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    else
        imagen->setText(tr("Sin imagen"));
    borrarimagen->setEnabled(m_hayImagen);
}

void encabezados::insertarImagen()
{
    const auto archivo = entorno().mensajes().elegirArchivo(
        tr("Insertar Imagen"),
        QStringLiteral("C:"),
        QStringLiteral("Imagen *.jpg (*.jpg);;Imagen *.bmp (*.bmp);;Todas las imágenes. (*.jpg *.bmp)"));
    if (!archivo || !aceptado(ponerImagen(entorno(), *archivo, m_administrador)))
        return;
    encabezadoimagen->setChecked(true);
    mostrarImagen();
}

void encabezados::borrarImagen()
{
    const auto quitada = quitarImagen(entorno(), m_administrador);
    if (!quitada)
        aceptado(quitada.rechazo());
    else if (*quitada)
        encabezadoimagen->setChecked(false);
    mostrarImagen();
}

void encabezados::mostrarMuestra()
{
    const PlantillasEncabezado actuales = escritas();
    const DatosPaciente ejemplo{
        QStringLiteral("Pérez Ejemplo"),
        QStringLiteral("María Laura"),
        QStringLiteral("Femenino"),
        QStringLiteral("12345678"),
        QStringLiteral("05/03/1980"),
        QStringLiteral("1234"),
        QStringLiteral("HC-001234")};
    Documento muestra;
    muestra.titulo = tr("Hoja de ejemplo");
    muestra.encabezado.general = encabezadoGeneral(entorno(), actuales.general);
    muestra.encabezado.paciente = encabezadoPaciente(ejemplo, actuales.paciente);
    if (actuales.imagen)
        muestra.encabezado.imagen = imagenDe(leerImagen(entorno()));
    muestra.fecha = entorno().clock().now();
    muestra.cuerpo
        = {Texto{tr("<p>Así salen los encabezados en cada hoja. Aquí va el contenido de lo que se imprime.</p>")}};
    ver(ventanas(), muestra, this);
}

void encabezados::save()
{
    const PlantillasEncabezado nuevas = escritas();
    if (!aceptado(guardarPlantillas(entorno(), nuevas, m_administrador)))
        return;
    m_guardadas = nuevas;
    terminar({});
}

} // namespace printing
