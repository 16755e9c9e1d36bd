#pragma once

#include <QObject>
#include <QPointer>
#include <QVariantMap>

#include <functional>
#include <map>

class QMdiArea;
class QWidget;

namespace ui {

class Ventana;

/// What a window is opened for: facts by name ("modo", "nrohc"...), and who wants to know the outcome. `alTerminar` is
/// called at most once, with the window's result, when the window has done what it was opened for; never when
/// cancelled.
struct Pedido {
    QVariantMap datos = {};
    std::function<void(const QVariantMap &resultado)> alTerminar = {};
};

/// How a window appears.
enum class Modo {
    Marco, ///< inside the main window, beside the others
    Dialogo ///< over its opener, which waits until it closes
};

/// The register through which windows open and find each other by name, so that none includes another. One window per
/// name: opening an open one brings it to the front and hands it the new request.
class Ventanas : public QObject
{
    Q_OBJECT

public:
    using Fabrica = std::function<Ventana *()>;

    explicit Ventanas(QObject *parent = nullptr);
    /// Windows still open are deleted without a question.
    ~Ventanas() override;

    void registrar(const QString &nombre, Modo modo, Fabrica fabrica);
    [[nodiscard]] bool existe(const QString &nombre) const;
    /// Every registered name, in alphabetical order.
    [[nodiscard]] QStringList nombres() const;

    /// Where Modo::Marco windows appear; without one they are windows of their own (as in tests).
    void setArea(QMdiArea *area);

    /// Opens or brings to the front. Null when no window of that name is registered, or when the window itself declined
    /// (Ventana::preparar); an open window that declines the new request stays as it was. `sobre` is the opener of a
    /// dialog; without one it is the active window. Throws what the window's constructor throws, db::Error as a rule,
    /// so call it from within Ventana::intentar().
    Ventana *abrir(const QString &nombre, const Pedido &pedido = {}, QWidget *sobre = nullptr);
    /// The open window of that name, or null; a window that has accepted to close is no longer open.
    [[nodiscard]] Ventana *buscar(const QString &nombre) const;
    /// Brings an open window to the front as it is, without a new request; false when it is not open.
    bool activar(const QString &nombre);
    /// Asks every open window to load its data again; those named, or all. The frame of them all goes by "sistema".
    void refrescar(const QStringList &nombres = {});
    /// Closes every window, dialogs first, or every one but `menos`; false when one of them stayed open because
    /// something would be lost.
    bool cerrarTodas(const QString &menos = {});

signals:
    /// refrescar() was called, for whoever shows something and is no window of this register.
    void refrescoPedido(const QStringList &nombres);

private:
    struct Entrada {
        Modo modo;
        Fabrica fabrica;
        QPointer<Ventana> abierta;
    };
    void mostrarEnMarco(Ventana *ventana);
    void mostrarComoDialogo(Ventana *ventana, QWidget *sobre);
    static void traerAlFrente(Ventana *ventana);

    std::map<QString, Entrada> m_entradas;
    QPointer<QMdiArea> m_area;
};

} // namespace ui
