#pragma once

#include "maintenance/CopiaProbada.h"
#include "maintenance/Respaldo.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QThread;

namespace db {
class Entorno;
}

namespace maintenance {

/// The automatic copy of the computer that holds the embedded database: when one is due, makes it in a thread of its
/// own, beside whatever the person does, and writes the outcome to the log. A failure is told once, and again only
/// after a success in between or when the settings have changed; until then it goes on trying.
class RespaldoAutomatico : public QObject
{
    Q_OBJECT

public:
    explicit RespaldoAutomatico(db::Entorno &entorno, QObject *parent = nullptr);
    /// As detener().
    ~RespaldoAutomatico() override;

    /// To be called every minute or so while the database is ready. Throws db::Error.
    void tic();
    [[nodiscard]] bool enMarcha() const { return !m_hilo.isNull(); }
    /// Cuts off a copy under way, leaving nothing of it, and waits for that; not longer than a few seconds, should a
    /// disk or a network not answer.
    void detener();

    /// Why there is no new copy; empty while all is well.
    [[nodiscard]] const QString &falla() const { return m_falla; }
    /// What the person has to be told and has not been; handed over once, then empty.
    [[nodiscard]] QString tomarAviso();

    /// For tests: see PasosRespaldo.
    void setPasos(PasosRespaldo pasos) { m_pasos = std::move(pasos); }

signals:
    /// "Realizando backup automático..." and how far it is; empty when it is over.
    void avanzado(const QString &texto);
    /// A copy was made or failed: see falla() and tomarAviso().
    void terminado();

private:
    struct Trabajo;

    void empezar(const PedidoRespaldo &pedido);
    void mostrarAvance();
    void concluir();
    void fallar(const DesenlaceRespaldo &desenlace);
    void anotar(const QString &accion);

    db::Entorno &m_entorno;
    PasosRespaldo m_pasos;
    AjustesRespaldo m_ajustes; ///< those that the state below is about
    QDateTime m_proximo; ///< before it nothing is due; invalid: not known
    int m_vecesOcupado = 0;
    QString m_falla;
    QString m_aviso;
    std::shared_ptr<Trabajo> m_trabajo;
    QPointer<QThread> m_hilo;
    QTimer m_avance;
};

/// What the person is told when there is no copy; `ultimo` is the newest one there is, invalid for none.
[[nodiscard]] QString textoSinRespaldo(const QString &motivo, const QDateTime &ultimo);

} // namespace maintenance
