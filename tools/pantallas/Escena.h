#pragma once

#include "Consultorio.h"
#include "app/forms/sistema.h"
#include "ui/Grilla.h"
#include "ui/Ventana.h"
#include "ui/Ventanas.h"

#include <functional>
#include <memory>
#include <vector>

namespace base {
class Mensajes;
}

namespace pantallas {

/// The program as one picture needs it, driven as a person would: by the names of the controls.
class Escena
{
public:
    explicit Escena(Consultorio &consultorio);

    [[nodiscard]] Consultorio &consultorio() { return m_consultorio; }
    [[nodiscard]] ui::Ventanas &ventanas() { return m_ventanas; }
    [[nodiscard]] QWidget &marco() { return *m_marco; }
    [[nodiscard]] const QStringList &problemas() const { return m_problemas; }

    /// A control of an open window; of the frame, when `ventana` is empty. Null and a problem when there is none.
    template <typename Control = QWidget>
    Control *control(const QString &ventana, const QString &nombre)
    {
        QWidget *donde = ventana.isEmpty() ? m_marco.get() : static_cast<QWidget *>(m_ventanas.buscar(ventana));
        auto *suyo = donde ? donde->findChild<Control *>(nombre) : nullptr;
        if (!suyo)
            m_problemas << QStringLiteral("no hay %1 en %2").arg(nombre, ventana);
        return suyo;
    }
    void pulsar(const QString &ventana, const QString &nombre);
    void escribir(const QString &ventana, const QString &nombre, const QString &texto);
    void tecla(const QString &ventana, const QString &nombre, Qt::Key cual);
    /// Chooses the row of a list whose cell reads so.
    void elegir(const QString &ventana, const QString &nombre, int columna, const QString &texto);
    void abrirAgenda(const QString &hora);

private:
    Consultorio &m_consultorio;
    ui::Ventanas m_ventanas;
    std::unique_ptr<app::sistema> m_marco;
    QStringList m_problemas;
};

struct Pantalla {
    QString archivo; ///< without its ending
    std::function<void(Escena &)> preparar;
    /// What the picture is taken during: a message box, which returns when it is closed. Null: preparar() is enough.
    std::function<void(Escena &, base::Mensajes &)> decir = {};
    bool conBase = true; ///< whether the program has found its database
};

/// A window that opens over the frame without a button of its own in every practice.
[[nodiscard]] std::function<void(Escena &)> sobreElMarco(const QString &nombre);

} // namespace pantallas
