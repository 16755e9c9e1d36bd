#pragma once

#include "Consultorio.h"
#include "agenda/forms/Registro.h"
#include "support/Prueba.h"
#include "ui/Grilla.h"
#include "ui/Ventana.h"

#include <QAbstractButton>

/// Stands in for a window of another part: remembers what was opened, and for what.
class Testigo : public ui::Ventana
{
public:
    Testigo(db::Entorno &e, ui::Ventanas &v, const QString &nombre)
        : Ventana(e, v, nombre, nombre)
    {
    }
    bool preparar(const ui::Pedido &pedido) override
    {
        abiertas << objectName();
        conDatos = pedido.datos;
        return true;
    }
    /// Closes it as if the person had chosen that.
    void elegir(const QVariantMap &resultado) { terminar(resultado); }

    static inline QStringList abiertas;
    static inline QVariantMap conDatos; ///< of the last one
};

/// A practice with the agenda's windows, driven as a person does. Its tests call preparar() in init() and terminar() in
/// cleanup().
class ConVentanas : public QObject
{
protected:
    std::unique_ptr<Consultorio> base;
    std::unique_ptr<ui::Ventanas> ventanas;

    void preparar(std::shared_ptr<agenda::Enlaces> enlaces = nullptr)
    {
        base = std::make_unique<Consultorio>();
        ventanas = std::make_unique<ui::Ventanas>();
        agenda::registrarVentanas(*base, *ventanas, std::move(enlaces));
        base->reloj.set(Consultorio::a("09:30"));
        Testigo::abiertas.clear();
        Testigo::conDatos.clear();
    }
    void terminar()
    {
        ventanas.reset();
        base->guion.terminar();
        base.reset();
    }
    void testigo(const QString &nombre, ui::Modo modo = ui::Modo::Marco)
    {
        ventanas->registrar(nombre, modo, [this, nombre] { return new Testigo(*base, *ventanas, nombre); });
    }

    /// Keys reach their shortcuts in the active window only.
    static void activar(QWidget *ventana)
    {
        QVERIFY(QTest::qWaitForWindowExposed(ventana));
        QCoreApplication::processEvents(); // an opener's own activation may still be on its way
        ventana->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), ventana);
    }
    template <typename Form>
    Form *abrir(const char *nombre, const QVariantMap &datos = {})
    {
        auto *form = qobject_cast<Form *>(ventanas->abrir(QLatin1String(nombre), {datos, {}}));
        if (form)
            activar(form);
        return form;
    }
    /// The open window of that name, once it is the active one.
    template <typename Form>
    Form *abierta(const char *nombre)
    {
        auto *form = qobject_cast<Form *>(ventanas->buscar(QLatin1String(nombre)));
        if (form)
            activar(form);
        return form;
    }
    static void pulsar(QAbstractButton *boton)
    {
        QVERIFY2(boton->isVisible() && boton->isEnabled(), qPrintable(boton->objectName()));
        QTest::mouseClick(boton, Qt::LeftButton);
    }
    /// Chooses the row of an hour, of several the one that is `cual` further.
    static void elegirHora(ui::Grilla *lista, const QString &hora, int cual = 0)
    {
        for (int i = 0; i < lista->modelo().rowCount(); ++i)
            if (lista->modelo().textoCelda(i, 0) == hora && cual-- == 0) {
                lista->elegirFila(i);
                lista->setFocus();
                return;
            }
        QFAIL(qPrintable("no row at " + hora));
    }
};
