#include "maintenance/forms/FormularioEntrada.h"

#include "ui/Estilo.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include <limits>

namespace maintenance {

namespace {

/// Months as people say an age: "1a 6m".
QString edadTexto(const QString &meses)
{
    bool esNumero = false;
    const int numero = meses.trimmed().toInt(&esNumero);
    return esNumero && numero >= 0 ? QStringLiteral("%1a %2m").arg(numero / 12).arg(numero % 12) : QString();
}

} // namespace

FormularioEntrada::FormularioEntrada(QWidget *parent)
    : QWidget(parent)
    , nombre(new QLineEdit(this))
    , prioridad(new QSpinBox(this))
    , m_rejilla(new QGridLayout(this))
{
    nombre->setObjectName(QStringLiteral("nombre"));
    prioridad->setObjectName(QStringLiteral("prioridad"));
    prioridad->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    prioridad->setToolTip(tr("Las entradas de mayor prioridad figuran primero; las de igual prioridad, por nombre."));
    prioridad->setMaximumWidth(140);
    m_rejilla->setContentsMargins(0, 0, 0, 0);
    m_rejilla->setHorizontalSpacing(ui::margen);
    m_rejilla->setVerticalSpacing(ui::espacio);
    m_rejilla->setColumnStretch(1, 1);
    m_rejilla->setColumnStretch(3, 1);
    auto *rotulo = new QLabel(tr("No&mbre:"), this);
    rotulo->setBuddy(nombre);
    m_rejilla->addWidget(rotulo, 0, 0, Qt::AlignRight);
    m_rejilla->addWidget(nombre, 0, 1, 1, 3);
}

void FormularioEntrada::preparar(db::Connection &conexion, const Lista &lista)
{
    qDeleteAll(m_pasajeros);
    m_pasajeros.clear();
    m_campos.clear();
    const int largo = largoMaximo(conexion, lista, lista.columnaNombre);
    nombre->setMaxLength(largo > 0 ? largo : 32767);

    int lugar = 0;
    QWidget *anterior = nombre;
    const auto agregar = [&](const QString &texto, const Campo &campo) {
        auto *rotulo = new QLabel(texto, this);
        rotulo->setBuddy(campo.editor);
        const int fila = 1 + lugar / 2, columna = 2 * (lugar % 2);
        m_rejilla->addWidget(rotulo, fila, columna, Qt::AlignRight);
        m_rejilla->addWidget(campo.lugar, fila, columna + 1);
        // At once: the layout would do it when the events of now are over, and Tab passes what is not shown.
        rotulo->show();
        campo.lugar->show();
        m_pasajeros << rotulo;
        setTabOrder(anterior, campo.editor);
        anterior = campo.editor;
        ++lugar;
    };
    m_rejilla->removeWidget(prioridad);
    for (const CampoLista &campo : lista.campos) {
        m_campos << campoDe(conexion, lista, campo);
        agregar(campo.rotulo, m_campos.constLast());
        m_pasajeros << m_campos.constLast().lugar;
    }
    agregar(tr("&Prioridad:"), {prioridad, prioridad});
    mostrar(entradaNueva(lista));
}

FormularioEntrada::Campo
FormularioEntrada::campoDe(db::Connection &conexion, const Lista &lista, const CampoLista &campo)
{
    using Clase = CampoLista::Clase;
    QWidget *nuevo = nullptr, *caja = nullptr;
    if (campo.clase == Clase::Opcion) {
        auto *opciones = new QComboBox(this);
        for (const auto &[codigo, texto] : campo.opciones)
            opciones->addItem(texto, QString::number(codigo));
        nuevo = opciones;
    } else if (campo.clase == Clase::Entero) {
        auto *numero = new QSpinBox(this);
        numero->setRange(campo.minimo, campo.maximo);
        numero->setMaximumWidth(140);
        nuevo = numero;
    } else if (campo.clase == Clase::Meses) {
        caja = new QWidget(this);
        auto *fila = new QHBoxLayout(caja);
        fila->setContentsMargins(0, 0, 0, 0);
        auto *meses = new QLineEdit(caja);
        meses->setMaxLength(4);
        meses->setMaximumWidth(70);
        auto *edad = new QLabel(caja);
        edad->setForegroundRole(QPalette::PlaceholderText);
        fila->addWidget(meses);
        fila->addWidget(edad, 1);
        connect(
            meses, &QLineEdit::textChanged, edad, [edad](const QString &texto) { edad->setText(edadTexto(texto)); });
        nuevo = meses;
    } else {
        auto *texto = new QLineEdit(this);
        const int largo = largoMaximo(conexion, lista, campo.columna);
        texto->setMaxLength(largo > 0 ? largo : 32767);
        if (campo.clase == Clase::Porcentaje)
            texto->setMaximumWidth(140);
        nuevo = texto;
    }
    nuevo->setObjectName(campo.columna);
    return {nuevo, caja ? caja : nuevo};
}

void FormularioEntrada::mostrar(const Entrada &entrada)
{
    m_id = entrada.id;
    nombre->setText(entrada.nombre);
    nombre->setCursorPosition(0);
    prioridad->setValue(entrada.prioridad);
    for (qsizetype i = 0; i < m_campos.size(); ++i) {
        const QString &texto = entrada.campos[i];
        if (auto *linea = qobject_cast<QLineEdit *>(m_campos[i].editor)) {
            linea->setText(texto);
            linea->setCursorPosition(0);
        } else if (auto *numero = qobject_cast<QSpinBox *>(m_campos[i].editor)) {
            numero->setValue(texto.toInt());
        } else if (auto *opciones = qobject_cast<QComboBox *>(m_campos[i].editor)) {
            opciones->setCurrentIndex(opciones->findData(texto));
        }
    }
}

Entrada FormularioEntrada::leer() const
{
    Entrada entrada{m_id, nombre->text(), prioridad->value(), {}};
    for (const Campo &campo : m_campos) {
        if (auto *linea = qobject_cast<QLineEdit *>(campo.editor))
            entrada.campos << linea->text();
        else if (auto *numero = qobject_cast<QSpinBox *>(campo.editor))
            entrada.campos << QString::number(numero->value());
        else if (auto *opciones = qobject_cast<QComboBox *>(campo.editor))
            entrada.campos << opciones->currentData().toString();
    }
    return entrada;
}

} // namespace maintenance
