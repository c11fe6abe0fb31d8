#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "image/CImagen.h"

using namespace orvela;

TEST(Imagen, CabeceraDeIdaYVuelta) {
    CImagen im;
    ASSERT_FALSE(im.Iniciar("/tmp/orvela_prueba.ozm", "", "prueba", 3, 2, "integer", 300.7, 0, "UTM-30N", "m",
                            Georreferencia{1, 2, 3, 4, -1, 30, 1}));
    ASSERT_FALSE(im.Guardar("/tmp/orvela_prueba", 1));
    Cabecera c;
    ASSERT_TRUE(CabeceraLegible("/tmp/orvela_prueba.ozm", &c));
    EXPECT_EQ(c.titulo, "prueba");
    EXPECT_EQ(c.filas, 3);
    EXPECT_EQ(c.columnas, 2);
    EXPECT_EQ(c.geo.errorPosicion, SinDato);
}
