#pragma once

#include "app/Migracion.h"
#include "ui/Ventana.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace app {

class CambioDeRuta;

/// The window 'Red': which database this computer works on. Opens without a database too, as it is where one without
/// is sent.
class accesored : public ui::Ventana
{
    Q_OBJECT

public:
    /// Without `red` there is nothing to change, and the window declines to open.
    accesored(db::Entorno &entorno, ui::Ventanas &ventanas, CambioDeRuta *red);

    bool preparar(const ui::Pedido &pedido) override;
    [[nodiscard]] bool hayCambios() const override;

    QRadioButton *modoaccess = nullptr;
    QRadioButton *modoservidor = nullptr;
    QRadioButton *local = nullptr;
    QRadioButton *otra = nullptr;
    QLineEdit *carpeta = nullptr;
    QPushButton *examinar = nullptr;
    QGroupBox *datosservidor = nullptr;
    QLineEdit *servidor = nullptr;
    QLineEdit *instancia = nullptr;
    QLineEdit *usuario = nullptr;
    QLineEdit *clave = nullptr;
    QPushButton *migrardatos = nullptr; ///< the data in use to the server
    QPushButton *migrarvacia = nullptr; ///< an empty database to the server
    QPushButton *volverarchivo = nullptr; ///< the server's data to a file
    QLabel *nota = nullptr; ///< what this version cannot do
    QLabel *resultado = nullptr; ///< of `probar`
    QPushButton *probar = nullptr;
    QPushButton *guardar = nullptr;
    QPushButton *cancelar = nullptr;

private:
    void armar();
    void mostrar(const Ruta &ruta);
    [[nodiscard]] Ruta leida() const;
    void habilitar();
    void elegirCarpeta();
    void probarRuta();
    void guardarCambios();
    [[nodiscard]] QGroupBox *armarTraslado();
    void trasladar(PedidoTraslado::Clase clase);

    CambioDeRuta *m_red;
    Ruta m_guardada;
};

} // namespace app
