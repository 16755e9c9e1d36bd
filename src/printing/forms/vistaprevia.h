#pragma once

#include "printing/Documento.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QToolButton;

namespace printing {

class Impresora;
class Paginas;
class VistaPaginas;

/// "Vista previa": a document as it will be printed; from here it is printed or written as a PDF. The fact "documento"
/// is the Documento; see ver().
class vistaprevia : public ui::Ventana
{
    Q_OBJECT

public:
    vistaprevia(db::Entorno &entorno, ui::Ventanas &ventanas, std::shared_ptr<Impresora> impresora);
    ~vistaprevia() override;

    bool preparar(const ui::Pedido &pedido) override;
    [[nodiscard]] QString ayuda() const override;

    QPushButton *imprimir;
    QPushButton *pdf;
    QToolButton *primera;
    QToolButton *anterior;
    QSpinBox *pagina;
    QToolButton *siguiente;
    QToolButton *ultima;
    QToolButton *alejar;
    QComboBox *zoom;
    QToolButton *acercar;
    QComboBox *papel;
    QComboBox *orientacion;
    QPushButton *cerrar;
    VistaPaginas *hojas;
    QLabel *aviso; ///< what was done last

private:
    void construir();
    void conectar();
    QWidget *barra();
    void cargarPapeles(const Hoja &hoja);
    /// Lays the document out on the sheet chosen.
    void componer();
    void mostrarPagina();
    void mostrarZoom();
    void elegirZoom();
    void print();
    void guardarPdf();

    std::shared_ptr<Impresora> m_impresora;
    Documento m_documento;
    std::shared_ptr<const Paginas> m_paginas;
};

} // namespace printing
