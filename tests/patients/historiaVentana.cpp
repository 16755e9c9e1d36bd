#include "db/Borradores.h"
#include "patients/HistoriaClinica.h"
#include "patients/NuevoPaciente.h"
#include "patients/forms/EncabezadoPaciente.h"
#include "patients/forms/Registro.h"
#include "patients/forms/histoclinica.h"
#include "patients/forms/pacientes.h"
#include "printing/Documento.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Borrador.h"
#include "ui/EditorTexto.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>

using namespace Qt::StringLiterals;
using patients::histoclinica;
using patients::PacienteAbierto;
using patients::pacientes;

namespace {

/// Keeps what is sent to print instead of showing it.
class vistaprevia : public ui::Ventana
{
public:
    vistaprevia(db::Entorno &entorno, ui::Ventanas &ventanas)
        : Ventana(entorno, ventanas, u"vistaprevia"_s, u"Vista previa"_s)
    {
    }
    [[nodiscard]] printing::Documento documento() const
    {
        return datos().value(u"documento"_s).value<printing::Documento>();
    }
    [[nodiscard]] QString cuerpo() const { return std::get<printing::Texto>(documento().cuerpo.value(0)).html; }
};

const QString ausente = u"Este paciente no Existe, probablemente a sido eliminado."_s;

} // namespace

/// The clinical-history sheet, and what goes to paper from it and from the patient file.
class HistoriaVentana : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_base = std::make_unique<soporte::BaseDePrueba>();
        m_ventanas = std::make_unique<ui::Ventanas>();
        patients::registrarVentanas(*m_base, *m_ventanas);
        m_ventanas->registrar(
            u"vistaprevia"_s, ui::Modo::Dialogo, [this] { return new vistaprevia(*m_base, *m_ventanas); });
        for (const auto &[apellido, historia] :
             {std::pair(u"PÉREZ"_s, u"{\\rtf1\\ansi Asma desde \\b 1990\\b0\\par Sin crisis}"_s),
              {u"GÓMEZ"_s, u"De Gómez"_s}})
            (void)patients::insertarPaciente(
                m_base->conexion(),
                {{u"Apellido"_s, apellido}, {u"Nombres"_s, u"ANA"_s}, {u"HC"_s, historia}, {u"alergias"_s, u"Yodo"_s}});
    }
    void cleanup()
    {
        m_ventanas.reset();
        QVERIFY(m_base->guion.terminar());
        m_base.reset();
    }

    void regla_data() { soporte::filasDeDialecto(); }
    void regla()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        const int nrohc
            = patients::insertarPaciente(
                  base.conexion(), {{u"Apellido"_s, u"PAZ"_s}, {u"Nombres"_s, u"LUZ"_s}, {u"alergias"_s, u"Yodo"_s}})
                  .nrohc;
        const PacienteAbierto suyo = *PacienteAbierto::abrir(base.conexion(), nrohc);
        const QVariantMap cambios{
            {u"HC"_s, u"<p>d'Angelo</p>"_s}, {u"GrupoSanguineo"_s, u" AB "_s}, {u"Tel"_s, u"9"_s}};
        QVERIFY(!patients::guardarHistoria(base, suyo, cambios));
        QCOMPARE(base.valor(u"SELECT HC FROM [Pacientes]"_s), u"<p>d'Angelo</p>"_s);
        QCOMPARE(base.valor(u"SELECT GrupoSanguineo FROM [Pacientes]"_s), u"AB"_s);
        QCOMPARE(base.valor(u"SELECT alergias FROM [Pacientes]"_s), u"Yodo"_s);
        QCOMPARE(base.valor(u"SELECT Tel FROM [Pacientes]"_s), QString()); // not of this sheet
        base.conexion().execute(u"UPDATE [Lista Doctores] SET accesoparcialpaciente = -1"_s);
        QVERIFY(patients::guardarHistoria(base, suyo, cambios)->texto.startsWith(u"No tiene permiso"_s));
        base.conexion().execute(u"UPDATE [Lista Doctores] SET accesoparcialpaciente = 0"_s);
        base.conexion().execute(u"DELETE FROM [Pacientes]"_s);
        QCOMPARE(patients::guardarHistoria(base, suyo, cambios)->texto, ausente);
    }

    void escribeYGuarda()
    {
        auto *ficha = qobject_cast<pacientes *>(m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 1}}}));
        ficha->findChild<QPushButton *>(u"bothc"_s)->click();
        auto *v = qobject_cast<histoclinica *>(m_ventanas->buscar(u"histoclinica"_s));
        QVERIFY(v);
        QCOMPARE(v->windowTitle(), u"Historia Clínica"_s);
        QCOMPARE(v->encabezado->nombre->text(), u"PÉREZ, ANA"_s);
        QCOMPARE(v->HC->textoPlano(), u"Asma desde 1990\nSin crisis"_s);
        QVERIFY(!v->hayCambios());
        QCOMPARE(v->focusWidget(), v->HC->hoja());
        v->GrupoSanguineo->setCurrentText(u"A"_s);
        v->findChild<QPlainTextEdit *>(u"alergias"_s)->setPlainText(u"Yodo y látex"_s);
        QTest::keyClick(v, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!v->hayCambios() && v->isVisible());
        QCOMPARE(ficha->encabezado->alertas->texto(), u"Yodo y látex"_s);
        QCOMPARE(ficha->findChild<QPlainTextEdit *>(u"alergias"_s)->toPlainText(), u"Yodo y látex"_s);
        QVERIFY(m_base->valor(u"SELECT HC FROM [Pacientes] WHERE NroHC = 1"_s).startsWith(u"{\\rtf1"_s)); // untouched
        v->HC->insertar(u"Hoy: "_s);
        v->aceptar->click();
        QVERIFY(!m_ventanas->buscar(u"histoclinica"_s));
        const QString guardada = m_base->valor(u"SELECT HC FROM [Pacientes] WHERE NroHC = 1"_s);
        QVERIFY2(guardada.contains(u"Hoy: Asma desde"_s) && guardada.startsWith(u"<html>"_s), qPrintable(guardada));
        QCOMPARE(m_base->valor(u"SELECT HC FROM [Pacientes] WHERE NroHC = 2"_s), u"De Gómez"_s);
    }

    void otroPacienteYEliminado()
    {
        auto *v = abrir(1);
        v->HC->insertar(u"x"_s);
        m_base->guion.esperarPregunta(
            u"Atención..."_s,
            u"Hay datos sin guardar (PÉREZ, ANA). ¿Desea dejar esta historia clínica de todos modos?"_s,
            false);
        QVERIFY(!m_ventanas->abrir(u"histoclinica"_s, {.datos = {{u"nrohc"_s, 2}}}));
        QVERIFY(v->HC->textoPlano().startsWith(u"xAsma"_s));
        m_base->conexion().execute(u"DELETE FROM [Pacientes] WHERE NroHC = 1"_s);
        m_base->guion.esperarMensaje(u"Atención..."_s, ausente);
        v->aceptar->click();
        QVERIFY(m_ventanas->buscar(u"histoclinica"_s));
        m_base->guion.esperarMensaje(u"Atención..."_s, ausente);
        QVERIFY(!m_ventanas->abrir(u"histoclinica"_s, {.datos = {{u"nrohc"_s, 77}}}));
    }

    void borradorDeLaHoja()
    {
        auto *v = abrir(2);
        v->HC->insertar(u"Importante. "_s);
        v->findChild<ui::Borrador *>()->escribir();
        QCOMPARE(db::Borradores(*m_base).pendientes().value(0).titulo, u"historia clínica de GÓMEZ, ANA"_s);
        m_ventanas = std::make_unique<ui::Ventanas>();
        patients::registrarVentanas(*m_base, *m_ventanas);
        m_base->guion.esperarPregunta(
            u"Atención..."_s,
            u"El 22/11/2026 09:00 quedaron datos sin guardar (historia clínica de GÓMEZ, ANA):\n\n"
            "Historia clínica: \"Importante. De Gómez\"  (guardado: \"De Gómez\")\n\n¿Desea recuperarlos?"_s,
            true);
        v = abrir(2);
        QCOMPARE(v->HC->textoPlano(), u"Importante. De Gómez"_s);
        v->aceptar->click();
        QVERIFY(db::Borradores(*m_base).pendientes().isEmpty());
    }

    void imprime()
    {
        auto *v = abrir(1);
        v->GrupoSanguineo->setCurrentText(u"A"_s);
        v->FactorSanguineo->setCurrentText(u"Rh +"_s);
        QTest::keyClick(v, Qt::Key_P, Qt::ControlModifier);
        auto *hoja = static_cast<vistaprevia *>(m_ventanas->buscar(u"vistaprevia"_s));
        QVERIFY(hoja);
        QCOMPARE(hoja->documento().titulo, u"Historia Clínica"_s);
        QTextDocument documento;
        documento.setHtml(hoja->cuerpo());
        QCOMPARE(
            documento.toPlainText().simplified(),
            u"Grupo Sanguíneo: A Factor Sanguíneo: Rh + Alertas: Yodo Asma desde 1990 Sin crisis"_s);
        hoja->close();

        auto *ficha = qobject_cast<pacientes *>(m_ventanas->abrir(u"pacientes"_s, {.datos = {{u"nrohc"_s, 2}}}));
        ficha->findChild<QLineEdit *>(u"Tel"_s)->setText(u"sin guardar"_s);
        m_base->guion.esperarPregunta(
            u"Atención..."_s,
            u"Hay datos sin guardar: la ficha se imprime como está guardada. ¿Desea imprimirla?"_s,
            true);
        QTest::keyClick(ficha, Qt::Key_P, Qt::ControlModifier);
        hoja = static_cast<vistaprevia *>(m_ventanas->buscar(u"vistaprevia"_s));
        QVERIFY(hoja);
        QCOMPARE(hoja->documento().titulo, u"Ficha del Paciente"_s);
        QVERIFY(hoja->cuerpo().contains(u"DATOS PERSONALES"_s) && hoja->cuerpo().contains(u"GÓMEZ, ANA"_s));
        QVERIFY(!hoja->cuerpo().contains(u"sin guardar"_s));
    }

private:
    histoclinica *abrir(int nrohc)
    {
        auto *v = qobject_cast<histoclinica *>(m_ventanas->abrir(u"histoclinica"_s, {.datos = {{u"nrohc"_s, nrohc}}}));
        Q_ASSERT(v);
        return v;
    }

    std::unique_ptr<soporte::BaseDePrueba> m_base;
    std::unique_ptr<ui::Ventanas> m_ventanas;
};

PRUEBA(HistoriaVentana)
#include "historiaVentana.moc"
