#include "demo/Perfil.h"

#include <algorithm>

namespace demo {

namespace {

QStringList lista(const char16_t *textos) { return QString::fromUtf16(textos).split(u'|'); }

Perfil hacer(Especialidad especialidad)
{
    switch (especialidad) {
    case Especialidad::Clinica: break;
    case Especialidad::Pediatria:
        return {
            lista(
                u"niño sano|Vacunación|Fiebre|Tos|Catarro|Dolor de oído|Dolor de garganta|Diarrea|Certificado escolar|"
                u"Erupción|Broncoespasmo|lactante|aptitud física"),
            lista(u"Consulta médica|pediatría"),
            lista(u"J00|J02|J20|H66|A09|B01|L20|J45")};
    case Especialidad::Ginecologia:
        return {
            lista(u"Control de embarazo|Control ginecológico|Anticoncepción|Climaterio|menstrual|Flujo vaginal|"
                  u"pelviano|mamario|Infertilidad|puerperio|resultados de estudios"),
            lista(u"Papanicolaou|Colposcopia|Ecografía obstétrica|Ecografía ginecológica|ginecología y|"
                  u"dispositivo intrauterino|Monitoreo fetal"),
            lista(u"N76|N94|D25|N92|E28")};
    case Especialidad::Traumatologia:
        return {
            lista(u"lumbar|cervical|de rodilla|de hombro|de cadera|de pie|de mano|articular|muscular|Traumatismo|Caída|"
                  u"resultados de estudios|posoperatorio"),
            lista(u"Consulta médica|traumatología|Infiltración|Bota corta de yeso|braquipalmar"),
            lista(u"M54|M17|S93|M75|S52")};
    case Especialidad::Kinesiologia:
        return {
            lista(u"lumbar|cervical|de hombro|de rodilla|muscular|posoperatorio|marcha"),
            lista(u"Sesión fisioterapia|Sesión kinesioterapia|Sesión de kinesioterapia|Terapia física"),
            lista(u"M54|M75|M62")};
    case Especialidad::Odontologia:
        return {
            lista(u"Control odontológico|Dolor dental"),
            lista(u"Consulta odontológica|Obturación simple|Tartrectomía|Extracción dentaria|Radiografía periapical"),
            lista(u"K02|K04|K05")};
    }
    return {
        lista(u"Control de salud|presión arterial|de diabetes|de tiroides|Receta|resultados de estudios|Orden de "
              u"estudios|"
              u"Certificado|Fiebre|cansancio|Mareos|de cabeza|Tos|Catarro|garganta|abdominal|Acidez|Presión alta|"
              u"orinar|Ansiedad|Insomnio"),
        lista(u"Consulta médica|Electrocardiograma|Espirometría|clínica médica"),
        lista(u"I10|E11|E78|J06|J45|K29|N39|R51|F41|E03")};
}

} // namespace

const Perfil &perfil(Especialidad especialidad)
{
    static QHash<int, Perfil> hechos;
    const auto it = hechos.find(int(especialidad));
    return it != hechos.end() ? *it : *hechos.insert(int(especialidad), hacer(especialidad));
}

std::vector<int> idsDe(const Catalogo &catalogo, const QStringList &partes)
{
    std::vector<int> propios, todos;
    for (const auto &[id, nombre] : catalogo) {
        todos.push_back(id);
        if (std::any_of(partes.cbegin(), partes.cend(), [&texto = nombre](const QString &parte) {
                return texto.contains(parte, Qt::CaseInsensitive);
            }))
            propios.push_back(id);
    }
    return propios.empty() ? todos : propios;
}

} // namespace demo
