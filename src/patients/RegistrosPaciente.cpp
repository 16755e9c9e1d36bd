#include "patients/RegistrosPaciente.h"

#include "db/Entorno.h"
#include "db/ListaDoctores.h"

namespace patients {

const std::vector<BotonRegistro> &registrosPaciente()
{
    // clang-format off
    static const std::vector<BotonRegistro> botones{
        {.nombre = u"botconsultas"_qs, .titulo = u"Consultas"_qs,
         .ayuda = u"Lista de consultas: nueva consulta, seguimiento, ver e imprimir."_qs,
         .ventana = u"listaconsultas"_qs, .derecho = {}, .icono = u"view-pim-journal"_qs},
        {.nombre = u"bothc"_qs, .titulo = u"Historia Clínica"_qs,
         .ayuda = u"Historia clínica en texto libre, grupo sanguíneo y alertas."_qs,
         .ventana = u"histoclinica"_qs, .derecho = {}, .icono = u"view-pim-notes"_qs},
        {.nombre = u"botantecedentes"_qs, .titulo = u"Antecedentes"_qs,
         .ayuda = u"Antecedentes personales, familiares, hábitos y perinatales."_qs,
         .ventana = u"antegene"_qs, .derecho = {}, .icono = u"view-history"_qs},
        {.nombre = u"botvacunas"_qs, .titulo = u"Vacunas"_qs, .ayuda = u"Vacunas recibidas."_qs,
         .ventana = u"vacunas"_qs, .derecho = {}, .icono = u"task-complete"_qs},
        {.nombre = u"botestudios"_qs, .titulo = u"Estudios"_qs, .ayuda = u"Estudios e imágenes."_qs,
         .ventana = u"estudios"_qs, .derecho = u"accesoestudios"_qs, .icono = u"folder-pictures"_qs},
        {.nombre = u"botcirugias"_qs, .titulo = u"Cirugías"_qs, .ayuda = u"Cirugías realizadas."_qs,
         .ventana = u"cirugias"_qs, .derecho = u"accesocirugias"_qs, .icono = u"edit-cut"_qs},
        {.nombre = u"botcertificados"_qs, .titulo = u"Certificados"_qs,
         .ayuda = u"Certificados, recetas, notas y cartas."_qs,
         .ventana = u"certificados"_qs, .derecho = u"accesocertificados"_qs, .icono = u"document-edit"_qs},
        {.nombre = u"botantegine"_qs, .titulo = u"Antec. gineco-obst."_qs,
         .ayuda = u"Antecedentes ginecológicos y obstétricos."_qs,
         .ventana = u"antegine"_qs, .derecho = u"accesoginecologia"_qs, .icono = u"view-history"_qs,
         .abreGrupo = true},
        {.nombre = u"botobstetricia"_qs, .titulo = u"Obstetricia"_qs,
         .ayuda = u"Embarazos: controles maternos y fetales, parto."_qs,
         .ventana = u"fichaobs"_qs, .derecho = u"accesoginecologia"_qs, .icono = u"view-calendar-list"_qs},
        {.nombre = u"botultrasonido"_qs, .titulo = u"Ultrasonido"_qs,
         .ayuda = u"Informes de ecografía ginecológica y obstétrica."_qs,
         .ventana = u"ultrasonido"_qs, .derecho = u"accesoginecologia"_qs, .icono = u"insert-image"_qs},
        {.nombre = u"botpercentilo"_qs, .titulo = u"Percentilo"_qs,
         .ayuda = u"Crecimiento: peso, talla y perímetro cefálico."_qs,
         .ventana = u"graficasp"_qs, .derecho = u"accesopediatria"_qs, .icono = u"office-chart-line"_qs},
        {.nombre = u"botoftalmologia"_qs, .titulo = u"Oftalmología"_qs, .ayuda = u"Exámenes oftalmológicos."_qs,
         .ventana = u"oftalmologia"_qs, .derecho = u"accesooftalmologia"_qs, .icono = u"system-search"_qs},
        {.nombre = u"botodontograma"_qs, .titulo = u"Odontograma"_qs, .ayuda = u"Estado de cada pieza dental."_qs,
         .ventana = u"odontograma"_qs, .derecho = u"accesoodontologia"_qs, .icono = u"table"_qs},
        {.nombre = u"botordenes"_qs, .titulo = u"Órdenes"_qs, .ayuda = u"Órdenes, sesiones y pagos."_qs,
         .ventana = u"ordenes"_qs, .derecho = u"accesoordenes"_qs, .icono = u"view-financial-list"_qs,
         .clinico = false, .abreGrupo = true},
        {.nombre = u"botpresupuestos"_qs, .titulo = u"Presupuestos"_qs, .ayuda = u"Prácticas presupuestadas."_qs,
         .ventana = u"presupuestos"_qs, .derecho = u"accesoordenes"_qs, .icono = u"accessories-calculator"_qs,
         .clinico = false},
    };
    // clang-format on
    return botones;
}

base::Control controlarRegistro(db::Entorno &entorno, const BotonRegistro &boton)
{
    if (auto control = db::controlarDerecho(entorno, boton.derecho))
        return control;
    if (boton.clinico && db::opcionUsuario(entorno, u"accesoparcialpaciente").toBool())
        return db::sinPermiso();
    return std::nullopt;
}

} // namespace patients
