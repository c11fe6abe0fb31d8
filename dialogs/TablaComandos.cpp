#include "dialogs/TablaComandos.h"

namespace {

const std::vector<EntradaComando> kTabla = {
    {{"Fichero"}, "Guardar", 32840, ""},
    {{"Fichero"}, "Guardar como", 32841, ""},
    {{"Fichero"}, "Información de la imagen", 32771, ""},
    {{"Fichero"}, "Convertir tipo de dato", 32810, ""},
    {{"Fichero", "Exportar"}, "Exportar a ASCII", 32773, ""},
    {{"Fichero", "Exportar"}, "Exportar a .bmp", 32878, ""},
    {{"Fichero"}, "&Salir", 57665, "Ctrl+S"},
    {{"Visualización"}, "Imagen", 32774, "Ctrl+I"},
    {{"Visualización"}, "Nueva ventana", 57600, ""},
    {{"Visualización"}, "Histograma", 32862, ""},
    {{"Visualización"}, "Nivel digital del píxel", 32778, ""},
    {{"Visualización"}, "Crear paleta", 32879, ""},
    {{"Visualización"}, "Crear mapa", 32880, ""},
    {{"Visualización", "Zoom"}, "Zoom hacia adelante", 32839, ""},
    {{"Visualización", "Zoom"}, "Zoom hacia atrás", 32842, ""},
    {{"Visualización", "Zoom"}, "Pantalla completa", 32847, ""},
    {{"Visualización", "Zoom"}, "Pantalla normal", 32848, ""},
    {{"Correcciones", "Radiométricas"}, "Bandeado de la imagen", 32811, ""},
    {{"Correcciones", "Radiométricas"}, "Líneas perdidas", 32812, ""},
    {{"Correcciones", "Radiométricas"}, "Píxeles perdidos", 32813, ""},
    {{"Correcciones", "Radiométricas"}, "Reflectividad aparente (Landsat)", 32870, ""},
    {{"Correcciones"}, "Geométricas", 32814, ""},
    {{"Correcciones"}, "Editor de puntos de control", 32884, ""},
    {{"Realces"}, "Expansion del contraste", 32824, ""},
    {{"Realces"}, "Composición de color", 32855, ""},
    {{"Realces"}, "Filtrado de la imagen", 32849, ""},
    {{"Transformaciones"}, "Índices de vegetación", 32825, ""},
    {{"Transformaciones"}, "Componentes principales", 32861, ""},
    {{"Transformaciones"}, "Tasseled cap", 32826, ""},
    {{"Transformaciones", "Mezclas espectrales", "Descomposición espectral"}, "NOAA", 32793, ""},
    {{"Transformaciones", "Mezclas espectrales", "Descomposición espectral"}, "Landsat", 32794, ""},
    {{"Transformaciones", "Mezclas espectrales"}, "Normalización", 32795, ""},
    {{"Clasificaciones", "Supervisada"}, "Fase entrenamiento", 32816, ""},
    {{"Clasificaciones", "Supervisada"}, "Establecer clase", 32819, ""},
    {{"Clasificaciones", "Supervisada"}, "Clasificador de mínima distancia", 32821, ""},
    {{"Clasificaciones", "Supervisada"}, "Clasificador de parelelepípedos", 32823, ""},
    {{"Clasificaciones", "Supervisada"}, "Clasificador de máxima probabilidad", 32828, ""},
    {{"Clasificaciones", "Supervisada"}, "Inspeccionar decisión", 32900, ""},
    {{"Clasificaciones"}, "No supervisada", 32827, ""},
    {{"Clasificaciones", "Verificación"}, "Muestreo aleatorio", 32856, ""},
    {{"Clasificaciones", "Verificación"}, "Matriz de confusión", 32857, ""},
    {{"Clasificaciones"}, "Calcular área", 32859, ""},
    {{"Herramientas"}, "Iniciar", 32854, ""},
    {{"Herramientas", "Reformar"}, "Enventanar", 32852, ""},
    {{"Herramientas", "Reformar"}, "Concatenar", 32851, ""},
    {{"Herramientas", "Reformar"}, "Contraer", 32772, ""},
    {{"Herramientas", "Reformar"}, "Expandir", 32853, ""},
    {{"Herramientas"}, "Reclasificar", 32858, ""},
    {{"Herramientas", "Operar"}, "Aritméticas", 32780, ""},
    {{"Herramientas", "Operar"}, "Escalares", 32781, ""},
    {{"Herramientas", "Operar"}, "Funciones", 32860, ""},
    {{"Herramientas", "Operar"}, "Lógicas", 32779, ""},
    {{"Herramientas", "Componer"}, "Sin referencia", 32791, ""},
    {{"Herramientas", "Componer"}, "Con referencia", 32790, ""},
    {{"Herramientas"}, "Regresión", 32863, ""},
    {{"Herramientas"}, "Estadísticas", 32789, ""},
    {{"Herramientas", "Vectorial"}, "Crear", 32843, ""},
    {{"Herramientas", "Vectorial"}, "Abrir fichero", 32845, ""},
    {{"Herramientas", "Vectorial"}, "Cerrar fichero", 32867, ""},
    {{"Herramientas", "Vectorial"}, "Rasterizar", 32882, ""},
    {{"Herramientas", "Vectorial", "Información"}, "Extracción ND de puntos", 32868, ""},
    {{"Herramientas", "Vectorial", "Información"}, "Perfiles de línea", 32869, ""},
    {{"Herramientas", "Vectorial", "Información"}, "Estadísticas de polígonos", 32881, ""},
    {{"Ayuda"}, "Contenidos", 57667, ""},
    {{"Ayuda"}, "&Acerca De Orvela...", 57664, ""},
    {{"Ayuda"}, "&Temas De Ayuda", 32883, ""},
    // Without a menu entry: the legend of a classified image.
    {{}, "Mostrar leyenda", 32822, "Ctrl+L"},
};

}  // namespace

const std::vector<EntradaComando>& TablaComandos() { return kTabla; }

const EntradaComando* BuscarComando(int id) {
    for (const auto& e : kTabla)
        if (e.id == id) return &e;
    return nullptr;
}
