// plantilla OUTPUT.mdb FOLDER: makes the empty database of a first start from the declared tables and the catalogues.

#include "app/Esquema.h"
#include "catalogos/Catalogos.h"
#include "db/Error.h"
#include "db/Schema.h"

#include <QFile>

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "uso: plantilla SALIDA.mdb CARPETA_DE_CATALOGOS\n");
        return 2;
    }
    try {
        catalogos::crearPlantilla(
            QFile::decodeName(argv[1]),
            QStringLiteral("kestrel428"),
            app::esquemaCompleto(),
            QFile::decodeName(argv[2]));
    } catch (const db::Error &error) {
        std::fprintf(stderr, "plantilla: %s\n", qPrintable(error.description()));
        return 1;
    }
    return 0;
}
