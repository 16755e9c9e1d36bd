#include "agenda/Reserva.h"
#include "app/Modulo.h"
#include "base/Clock.h"
#include "base/Mensajes.h"
#include "db/Connection.h"
#include "db/Error.h"

#include <cstdio>

namespace {

/// Nobody sits at this station: messages go to the error output, questions are answered No.
class MensajesMudos final : public base::Mensajes
{
public:
    void mensaje(const QString &titulo, const QString &texto, base::Icono) override
    {
        std::fprintf(stderr, "%s | %s\n", qUtf8Printable(titulo), qUtf8Printable(texto));
    }
    bool pregunta(const QString &, const QString &, bool) override { return false; }
    std::optional<QString> pedirTexto(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> pedirClave(const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirArchivo(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirDestino(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirCarpeta(const QString &, const QString &) override { return {}; }
};

} // namespace

/// terminal FOLDER PATIENT DOCTOR FIRST-DAY BOOKINGS: books three times a day, one booking a day, and prints each
/// booking's ids once it is saved: what is printed may not be lost.
int main(int argc, char *argv[])
{
    if (argc != 6)
        return 2;
    MensajesMudos mensajes;
    const base::SystemClock clock;
    app::Modulo modulo(QString::fromLocal8Bit(argv[1]), mensajes, clock, db::Engines::standard());
    modulo.leerRuta();
    try {
        modulo.conectar();
        QDate dia = QDate::fromString(QString::fromLatin1(argv[4]), Qt::ISODate);
        for (int i = 0; i < atoi(argv[5]); ++i, dia = dia.addDays(1)) {
            agenda::Reserva reserva;
            reserva.nrohc = atoi(argv[2]);
            reserva.doctor = atoi(argv[3]);
            for (const int minuto : {0, 20, 40})
                reserva.turnos << QDateTime(dia, QTime(10, minuto));
            const auto hecha = agenda::reservar(modulo, reserva);
            if (!hecha) {
                std::fprintf(stderr, "%s\n", qUtf8Printable(hecha.rechazo().texto));
                return 3;
            }
            std::printf("%d", int(hecha->noAsignados.size()));
            for (const qint64 id : hecha->ids)
                std::printf(" %lld", static_cast<long long>(id));
            std::printf("\n");
            std::fflush(stdout);
        }
    } catch (const db::Error &error) {
        std::fprintf(stderr, "%d %s\n", error.number(), qUtf8Printable(error.description()));
        return 4;
    }
    return 0;
}
