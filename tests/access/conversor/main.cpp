// Converts an old Access file and dies, as in a power cut, at a given moment: conversor FILE MOMENT

#include "app/Esquema.h"
#include "db/access/Conversion.h"
#include "db/access/LectorProceso.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdlib>

namespace {

class Corte final : public db::access::Seguimiento
{
public:
    explicit Corte(int momento)
        : m_quedan(momento)
    {
    }
    bool avanzar(const QString &, qint64, qint64) override
    {
        if (m_quedan-- == 0)
            std::_Exit(9);
        return true;
    }

private:
    int m_quedan;
};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication aplicacion(argc, argv);
    db::access::Pedido pedido;
    pedido.archivo = QFile::decodeName(argv[1]);
    pedido.clave = QStringLiteral("kestrel428");
    pedido.rutinas = app::esquemaPorRutinas();
    pedido.abrir = [](const QString &archivo) {
        return std::make_unique<db::access::LectorProceso>(archivo, QStringLiteral(VASTELO_LECTOR));
    };
    Corte corte(std::atoi(argv[2]));
    return db::access::convertir(pedido, corte).tipo == db::access::Desenlace::Tipo::Hecha ? 0 : 1;
}
