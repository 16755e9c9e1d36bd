#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace maintenance {

/// One setting, declared once: where it is kept, how a person sees it and what it may hold.
struct Ajuste {
    enum class Tipo {
        Bandera, ///< yes or no
        Uno, ///< yes or no in a column of numbers, of which 1 alone is yes
        Eleccion, ///< one of `opciones`
        Entero, ///< from `minimo` to `maximo`
        Texto,
        Memo, ///< text of several lines
        Carpeta, ///< a folder; empty for the usual one
        Imagen ///< a picture of the program folder; its value is a path, empty for none
    };
    struct Opcion {
        QString texto;
        int valor = 0;
        QString nombre = {}; ///< object name, where the options stand open beside each other
    };

    QString columna; ///< of `Config`, or the name of a value of this computer
    QString etiqueta; ///< mnemonic included
    QString ayuda; ///< what it changes
    Tipo tipo = Tipo::Bandera;
    std::vector<Opcion> opciones = {};
    int minimo = 0;
    int maximo = 0;
    bool deEquipo = false; ///< kept in setup.dat, for this computer alone

    /// The label as a text refers to it: no mnemonic, colon or line break.
    [[nodiscard]] QString rotulo() const;
};

struct SeccionAjustes {
    QString nombre; ///< object name of its frame
    QString titulo;
    std::vector<Ajuste> ajustes = {};
    int columnas = 1; ///< pairs of label and field beside each other
};

/// A page of the window. Some hold no setting of `Config`, but what goes with them.
struct GrupoAjustes {
    QString nombre; ///< object name of its page
    QString titulo;
    QString icono;
    std::vector<SeccionAjustes> secciones = {};
    QString palabras = {}; ///< what a search finds it by, beside its texts
};

/// Every setting of the practice and of this computer, in the order in which they are shown.
[[nodiscard]] const std::vector<GrupoAjustes> &gruposDeAjustes();

/// Null when there is no such setting; without regard to case.
[[nodiscard]] const Ajuste *buscarAjuste(QStringView columna);
/// "Duración de los turnos: Lunes": section and label.
[[nodiscard]] QString nombreCompleto(const Ajuste &ajuste);

/// Columns of `Config` that are no settings of this window, each with the reason.
[[nodiscard]] const std::vector<std::pair<QString, QString>> &columnasSinAjuste();

/// Names of the values of this computer.
namespace equipo {
inline const QString segundosAgenda = QStringLiteral("segundosagenda");
inline const QString segundosMensajes = QStringLiteral("segundosmensajes");
inline const QString modoTurno = QStringLiteral("modoturno");
} // namespace equipo

} // namespace maintenance
