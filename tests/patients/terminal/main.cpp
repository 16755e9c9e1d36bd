#include "app/Modulo.h"
#include "base/Clock.h"
#include "db/Borradores.h"
#include "db/Connection.h"
#include "patients/forms/Registro.h"
#include "ui/MensajesQt.h"
#include "ui/Ventana.h"
#include "ui/Ventanas.h"

#include <QApplication>
#include <QLineEdit>
#include <QTimer>

#include <cstdio>

/// terminal FOLDER PATIENT TEXT: opens the patient's file, types the text into its address letter by letter, says
/// "escrito" once a draft of it is stored, and goes on typing until it is killed.
int main(int argc, char *argv[])
{
    QApplication aplicacion(argc, argv);
    if (argc != 4)
        return 2;
    ui::MensajesQt mensajes;
    const base::SystemClock clock;
    app::Modulo modulo(QString::fromLocal8Bit(argv[1]), mensajes, clock, db::Engines::standard());
    modulo.leerRuta();
    modulo.conectar();
    ui::Ventanas ventanas;
    patients::registrarVentanas(modulo, ventanas);
    const int nrohc = atoi(argv[2]);
    auto *ficha = ventanas.abrir(QStringLiteral("pacientes"), {.datos = {{QStringLiteral("nrohc"), nrohc}}});
    auto *domicilio = ficha ? ficha->findChild<QLineEdit *>(QStringLiteral("Domicilio")) : nullptr;
    if (!domicilio)
        return 3;

    const QString texto = QString::fromUtf8(argv[3]);
    qsizetype puestas = 0;
    bool dicho = false;
    QTimer tecla;
    QObject::connect(&tecla, &QTimer::timeout, domicilio, [&] {
        if (puestas < texto.size()) {
            domicilio->insert(texto.mid(puestas++, 1));
        } else if (dicho) {
            domicilio->insert(QStringLiteral("."));
        } else if (db::Borradores(modulo).leer(QStringLiteral("pacientes"), nrohc)) {
            dicho = true;
            std::printf("escrito\n");
            std::fflush(stdout);
        }
    });
    tecla.start(20);
    return QApplication::exec();
}
