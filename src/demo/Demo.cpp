#include "demo/Demo.h"

#include "db/Config.h"
#include "demo/Practica.h"
#include "patients/Esquema.h"

namespace demo {

namespace {

// A part of the whole work, shown as one stretch of its progress.
Avance tramo(const Avance &avance, int desde, int hasta)
{
    return [=](int porciento, const QString &etapa) {
        if (avance)
            avance(desde + (hasta - desde) * porciento / 100, etapa);
    };
}

void guardarUltimasConsultas(Practica &practica)
{
    const QString sql = QStringLiteral("UPDATE [Pacientes] SET ultimacons = ? WHERE NroHC = ?");
    for (size_t i = 0; i < practica.pacientes.size(); ++i)
        if (practica.pacientes[i].ultimaConsulta.isValid())
            practica.lote.escribir(sql, {practica.pacientes[i].ultimaConsulta, int(i) + 1});
}

void guardarEncabezados(db::Config &config)
{
    config.guardar(
        u"encabezadogeneral",
        QStringLiteral(
            "<html><head><style>p,ul,ol,li{margin:0;white-space:pre-wrap}</style></head><body>"
            "<p align=\"center\"><span style=\"color:#0b5c8f;font-size:14pt;\"><b>Consultorios San "
            "Martín</b></span></p>"
            "<p align=\"center\"><b>&lt;medico&gt;</b>  -  &lt;especialidad&gt;  -  Mat. &lt;matricula&gt;</p>"
            "<p align=\"center\">San Martín 1450, Rosario  -  Tel. (0341) 445-1200</p></body></html>"));
    config.guardar(
        u"encabezadopaciente",
        QStringLiteral("<html><head><style>p,ul,ol,li{margin:0;white-space:pre-wrap}</style></head><body>"
                       "<p><b>Paciente:</b> &lt;apellido&gt;, &lt;nombre&gt;     <b>D.N.I.:</b> &lt;dni&gt;     "
                       "<b>Nº H.C.:</b> &lt;hc&gt;</p><p><b>Fecha de nacimiento:</b> &lt;fechanac&gt;     "
                       "<b>Sexo:</b> &lt;sexo&gt;</p></body></html>"));
}

} // namespace

void llenar(db::Connection &conexion, const Medida &medida, const Avance &avance)
{
    Q_ASSERT(medida.hoy.isValid());
    Practica practica(conexion, medida);
    crearProfesionales(practica);
    crearCoberturas(practica);
    crearPacientes(practica, tramo(avance, 0, 15));
    crearAgenda(practica, tramo(avance, 15, 45));
    crearCuentas(practica, tramo(avance, 45, 65));
    crearConsultas(practica, tramo(avance, 65, 90));
    crearEmbarazos(practica);
    tramo(avance, 0, 100)(94, QStringLiteral("Vacunas y controles"));
    crearControlesDeNinos(practica);
    guardarUltimasConsultas(practica);
    crearTelefonos(practica);
    crearHistorial(practica);
    practica.lote.cerrar();
    conexion.prepareSearch(*patients::esquema().table(u"Pacientes"));

    db::Config config(conexion);
    const int ultimo = int(practica.pacientes.size());
    config.guardar(u"UltimoPaci", ultimo);
    config.guardar(u"prefijohc", QStringLiteral("HC-"));
    config.guardar(u"numerohc", QString::number(ultimo + 1));
    guardarEncabezados(config);
    tramo(avance, 0, 100)(100, QStringLiteral("Listo"));
}

void llenarSiVacia(db::Connection &conexion, QDate hoy)
{
    if (conexion.query(QStringLiteral("SELECT TOP 1 NroHC FROM [Pacientes]"))->rowCount() == 0)
        llenar(conexion, {.hoy = hoy});
}

} // namespace demo
