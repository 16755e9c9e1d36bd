#pragma once

#include "db/Engine.h"
#include "tds/servidor/Mensaje.h"

#include <QHash>

namespace tds {

/// What the server is started with.
struct Ajustes {
    QString carpeta; ///< one file per database, "<name>.mdb"
    QString usuario = QStringLiteral("sa");
    QString clave;
};

/// One client of the server, from its login to its end, on a thread of its own.
class Sesion
{
public:
    Sesion(int socket, const Ajustes &ajustes);
    ~Sesion();

    void atender();

private:
    struct Fallo {
        int numero = 50000;
        int clase = 16;
        QString texto;
    };

    void responder(const Escritor &salida);
    void responderPrevio();
    /// False when the client was refused.
    [[nodiscard]] bool ingresar(const Lector &lector);
    void abrirBase(const QString &nombre);
    void lote(const QString &texto);
    void llamada(Lector &lector);
    void transaccion(Lector &lector);
    /// Runs statements and writes what they answer; stops at the first failure.
    void ejecutar(Escritor &salida, const QString &texto, const db::Params &parametros, bool dentroDeLlamada);
    /// Statements of the server itself, not of its tables. False when it is none of them.
    [[nodiscard]] bool propia(Escritor &salida, const QString &sentencia, const db::Params &parametros, quint8 fin);

    void escribirFilas(Escritor &salida, const db::ResultSet &filas, const QString &sentencia);
    static void escribirFallo(Escritor &salida, const Fallo &fallo);
    static void escribirFin(Escritor &salida, quint8 clase, int estado, int orden, qint64 filas);
    [[nodiscard]] static Fallo falloDe(const std::exception &error);
    /// One value as a result of one row.
    void escribirNumero(Escritor &salida, quint8 fin, const std::optional<qint64> &valor);
    /// What the catalog says of a table's columns, in the order in which the program asks for it.
    void escribirColumnas(Escritor &salida, quint8 fin, const QString &tabla);
    void deshacer(Escritor &salida);

    int m_socket;
    const Ajustes &m_ajustes;
    QString m_base;
    std::unique_ptr<db::Engine> m_motor;
    bool m_enTransaccion = false;
    bool m_abortar = false; ///< XACT_ABORT: a failure undoes the whole transaction
    QHash<int, QString> m_preparadas;
    int m_siguiente = 1;
};

} // namespace tds
