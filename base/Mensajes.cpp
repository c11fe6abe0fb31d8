#include "base/Mensajes.h"

#include <algorithm>
#include <array>

namespace orvela {

namespace {

struct Entrada {
    int id;
    const char* texto;
};

// The message table: every text the program shows in a message box, by id.
constexpr Entrada kTabla[] = {
    {61216, "No hay ninguna ventana activa.\n\nAbra una nueva ventana para realizar la operación."},
    {61217, "El archivo seleccionado no posee una extensión adecuada.\n\nElija uno con extensión \"*.%1\" o \"*.%2\"."},
    {61218, "No se ha encontrado el archivo \"*.%1\" o puede estar corrupto.\n\nCompruébelo para realizar la operación."},
    {61219, "No se ha seleccionado %1 de entrada.\n\nElija %2 para realizar la operación."},
    {61220, "No se ha seleccionado %1 de salida.\n\nElija %2 para realizar la operación."},
    {61221, "Debe seleccionar previamente %1 de entrada,\n\npara la correcta ejecución de la operación."},
    {61222, "%1 de las %2 de entrada seleccionadas no coincide.\n\nElija %2 donde sí lo haga para realizar la operación."},
    {61223, "El número de clases indicado es incorrecto.\n\nSeleccione un valor superior a uno."},
    {61224, "El número de bandas indicado es incorrecto.\n\nSeleccione un valor superior a cero."},
    {61225, "El valor indicado al multiplicador es incorrecto.\n\nSeleccione un valor superior a cero."},
    {61226, "El número de componentes principales indicado es incorrecto.\n\nSeleccione un valor superior a cero o no mayor que el número de bandas."},
    {61227, "El número de imágenes a componer es incorrecto.\n\nSeleccione un valor superior a uno."},
    {61228, "La posición donde desea concatenar la imagen, está fuera de la imagen principal.\n\nSeleccione unos valores dentro de la imagen de la ventana activa."},
    {61229, "El identificador tiene que estar comprendido entre 0 255.\n\nSe usará el identificador automático."},
    {61230, "%1 introducido es incorrecto.\n\nSeleccione un valor superior a cero para el correcto funcionamiento."},
    {61231, "La estimación obtenida es incorrecta.\n\nSeleccione otro fichero de puntos de control."},
    {61232, "Las dimensiones de la imagen corregida son incorrectas.\n\nSeleccione unos valores mayores que uno."},
    {61233, "Las coordenadas UTM de los extremos son incorrectas.\n\nSeleccione unos valores adecuados."},
    {61234, "%1 introducidos son incorrectos.\n\nSeleccione valores superiores a cero para el correcto funcionamiento."},
    {61235, "No puede asociarse el mismo ND a distintos colores.\n\nAsigne nuevos valores para realizar la operación."},
    {61236, "No puede dejar todos los colores sin asociarlos a un ND.\n\nAsigne algún ND a algún color."},
    {61237, "No puede dejar sin asignación el color por defecto.\n\nAsigne el ND=256 al color que desee por defecto."},
    {61238, "%1 no pueden ser todos nulos.\n\nAsigne valores correctos para hacer la operación."},
    {61239, "Los valores de los componentes básicos no son adecuados.\n\nAsigne valores correctos para hacer la operación."},
    {61240, "Los valores de altura y anchura del rectángulo no son correctos.\n\nAsigne valores mayores de cero para hacer la operación."},
    {61241, "El fichero leyenda asociado a la imagen clasificada no se ha podido abrir.\n\nElija una imagen clasificada que posea dicho archivo."},
    {61242, "La posición que desea enventanar de la imagen está fuera de esta.\n\nSeleccione unos valores dentro de la imagen de entrada."},
    {61243, "La %1 del extremo superior izquierdo debe ser menor que\n\nla %1 del extremo inferior derecho."},
    {61244, "Los valores de las posiciones fila y columna no son correctos.\n\nAsigne valores mayores o igual a cero para hacer la operación."},
    {61245, "No se puede determinar la imagen enventanada con el ratón.\n\nLa imagen de entrada debe ser la de la ventana activa."},
    {61246, "El rango de NV introducido es incorrecto.\n\nSeleccione valores comprendidos entre 0 y 255."},
    {61247, "El rango de ND introducido en la expansión lineal con rango interactivo es incorrecto.\n\nSeleccione valores mayores o igual que cero."},
    {61248, "El ND introducido es incorrecto para datos 'byte'.\n\nEl ND debe pertenecer al rango [0,255]."},
    {61249, "El ND introducido es incorrecto para datos 'integer'.\n\nEl ND debe pertenecer al rango [0,65535]."},
    {61250, "El tipo de dato de la imagen utilizada no es reconocido.\n\nEl archivo .inf puede estar dañado."},
    {61251, "El tipo de dato de la imagen utilizada no es el correcto.\n\nElija imágenes cuyo tipo de dato sea 'byte' o 'integer'."},
    {61252, "Los valores del rango de entrada son incorrectos.\n\nElija el valor inicial del rango menor que el final."},
    {61253, "El tipo de dato de la imagen máscara utilizada no es el correcto.\n\nElija imágenes cuyo tipo de dato sea 'byte'."},
    {61254, "El tipo de dato de la imagen clasificada utilizada no es el correcto.\n\nElija imágenes cuyo tipo de dato sea 'byte'."},
    {61255, "El tamaño del filtrado direccional elegido es incorrecto.\n\nSe requiere un tamaño de la ventana de 3 x 3."},
    {61256, "El tipo de dato de la imagen de entrada y el tipo de dato al que deseamos convertir son el mismo.\n\nNo se puede realizar la operación indicada."},
    {61257, "Esta conversión ha producido una pérdida en la precisión."},
    {61258, "Error en las coordenadas del ND.\n\nEl punto indicado está fuera de la imagen."},
    {61259, "Los NDs de las clases son distintos para la verdad terreno y la imagen clasificada.\n\nNo se puede realizar la verificación."},
    {61260, "No se ha podido crear el fichero %1.\n\nInténtelo con otro nombre para el archivo."},
    {61261, "Se ha superado el número máximo de puntos en la rasterización.\n\nHay puntos que no se han podido incluir en la operación."},
    {61262, "No se ha podido crear el archivo *.bmp."},
    {61263, "La resolución del zoom se ha superado.\n\nNo se puede realizar un nuevo zoom."},
    {61264, "No hay ninguna imagen en la ventana activa.\n\nNo se puede realizar la operación indicada."},
    {61265, "La imagen activa actualmente proviene de una composición en color.\n\nCon este tipo de imágenes sólo se permite exportarlas a formato gráfico (*.bmp)."},
    {61266, "Se ha producido un error al dibujar %1."},
    {61267, "Imposible visualizar la imagen porque no se ha encontrado la paleta seleccionada.\n\nCompruebe que los archvos *.pal estén correctamente."},
    {61268, "El valor del factor de contracción de las filas es incorrectos.\n\nElija un valor inferior al del número de filas de la imagen."},
    {61269, "El valor del factor de contracción de las columnas es incorrectos.\n\nElija un valor inferior al del número de columnas de la imagen."},
    {61270, "Se ha producido un intento de división por cero.\n\nAl no poder realizar esta operación se visualizará la segunda imagen."},
    {61271, "Se ha producido un intento de división por cero.\n\nNo se ha podido realizar la operación indicada."},
    {61272, "La imagen que desea guardar no tiene nombre.\n\nUtilice la opción 'Guardar como' para asignarle un nombre."},
    {61273, "No se puede realizar zoom sobre una imagen en pantalla completa."},
    {61274, "Se ha superado el númeo máximo de zooms consecutivos."},
    {61275, "El fichero seleccionado no es un archivo de %1."},
    {61276, "Todas las ubicaciones disponibles se encuentran activas.\n\nDesactive las estructuras vectoriales que desee para poder abrir otras nuevas."},
    {61277, "Existe un fichero con el mismo nombre ya activo."},
    {61278, "El elemento elegido no está activo."},
    {61279, "Debe realizarse primero la 'Fase de entrenamiento'\n\npara establecer qué bandas vamos a clasificar."},
    {61280, "Es necesario tener abierta en la ventana activa\n\nuna de las bandas elegidas en la 'Fase de entrenamiento'."},
    {61281, "Los valores de las posiciones fila y columnas son incorrectas.\n\nElija valores que estén dentro de la imagen."},
    {61282, "No se puede realizar la operación raíz cuadrada en la imagen indicada\n\nporque los NDs no pueden tomar valores negativos."},
    {61283, "No se puede realizar la operación logaritmo neperiano en la imagen indicada\n\nporque los NDs deben tomar valores positivos."},
    {61284, "El archivo seleccionado no existe o no se puede abrir."},
    {61285, "No se puede hacer un zoom mientras se visualiza un mapa."},
    {61286, "No se puede pasar a pantalla completa mientras se visualiza un mapa."},
    {61287, "No se pueden construir ficheros vectoriales mientras se visualiza un mapa. "},
    {61288, "La visualización ya se encuentra en pantalla completa"},
};

}  // namespace

const char* TextoMensaje(int id) {
    const auto* e = std::find_if(std::begin(kTabla), std::end(kTabla),
                                 [id](const Entrada& x) { return x.id == id; });
    return e == std::end(kTabla) ? nullptr : e->texto;
}

std::vector<int> IdsMensajes() {
    std::vector<int> ids;
    for (const auto& e : kTabla) ids.push_back(e.id);
    return ids;
}

std::string Sustituir(std::string_view plantilla, std::string_view f1, std::string_view f2) {
    std::string r;
    r.reserve(plantilla.size() + f1.size() + f2.size());
    for (std::size_t i = 0; i < plantilla.size(); ++i) {
        if (plantilla[i] == '%' && i + 1 < plantilla.size() &&
            (plantilla[i + 1] == '1' || plantilla[i + 1] == '2')) {
            r += plantilla[i + 1] == '1' ? f1 : f2;
            ++i;
        } else {
            r += plantilla[i];
        }
    }
    return r;
}

std::string Mensaje::Texto() const {
    if (id == 0) return libre;
    const char* t = TextoMensaje(id);
    return t ? Sustituir(t, f1, f2) : std::string();
}

}  // namespace orvela
