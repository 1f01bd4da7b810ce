#include "core/sesion/paneles.hpp"

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "core/runtime/calendario.hpp"
#include "core/sesion/clientes.hpp"
#include "tests/core/runtime/error_esperado.hpp"
#include "tests/core/sesion/sesion_prueba.hpp"

namespace tpv {
namespace {

using prueba::ErrorDe;

class PanelesArranque : public prueba::SesionTest {
protected:
    void ProveedoresConProductos() {
        for (const char* valores : {"(1,'Zeta',Null,Null,0,0,1)", "(2,'Alfa','alfa.png',123,-1,0,2)",
                                    "(3,'Beta',Null,Null,-1,0,3)", "(4,'Borrado',Null,Null,0,-1,4)",
                                    "(5,'Sin productos',Null,Null,0,0,5)"})
            Ejecutar({std::string("insert into Proveedores (codigo,Nombre,imagen,color,prv_color,Borrar,posicion) "
                                  "values ") + valores});
        for (int proveedor : {1, 2, 3, 4})
            Ejecutar({"insert into productos (Codigo,nombre,precio,proveedor,seccion) values (" +
                      std::to_string(proveedor) + ",'P',1," + std::to_string(proveedor) + ",0)"});
    }

    static std::vector<std::string> Campo(const PanelRegistros& panel, std::string ButtonRecord::*campo) {
        std::vector<std::string> v;
        for (const ButtonRecord& b : panel) v.push_back(b.*campo);
        return v;
    }
    using Textos = std::vector<std::string>;
};

TEST_P(PanelesArranque, Proveedores_SinProductosUnBotonRojoYSeccionesVacias) {
    Ejecutar({"insert into Proveedores (codigo,Nombre,Borrar) values (1,'Sin productos',0)"});
    sesion().CampoOrdenItemsCaja = "Nombre";
    sesion().Sector = "PANADERIA";
    CargarPanelProveedores();
    CargarPanelSecciones();
    const PanelRegistros& p = sesion().PanelProveedores;
    ASSERT_EQ(p.size(), 1u);
    EXPECT_EQ(p[0].TextoSuperior, "Sin Proveedores");
    EXPECT_EQ(p[0].Codigo, "-1");
    EXPECT_EQ(p[0].Color, "255");
    EXPECT_EQ(p[0].Imagen, "");
    EXPECT_TRUE(sesion().PanelSecciones.empty());
}

TEST_P(PanelesArranque, Proveedores_ColoresPropiosOGenericosPorTurnoYOrden) {
    ProveedoresConProductos();
    Sesion& s = sesion();
    s.CarpetaFotos = "/fotos/";
    s.CampoOrdenItemsCaja = "Nombre";
    s.Sector = "PERFUMERIA";
    CargarPanelProveedores();
    EXPECT_EQ(Campo(s.PanelProveedores, &ButtonRecord::Texto), (Textos{"Alfa", "Beta", "Zeta"}));
    EXPECT_EQ(Campo(s.PanelProveedores, &ButtonRecord::Codigo), (Textos{"2", "3", "1"}));
    // A flag without a colour reads white; a cleared flag takes the generic colours.
    EXPECT_EQ(Campo(s.PanelProveedores, &ButtonRecord::Color), (Textos{"123", "16777215", "11"}));
    EXPECT_EQ(Campo(s.PanelProveedores, &ButtonRecord::Imagen), (Textos{"/fotos/alfa.png", "/fotos/", "/fotos/"}));

    // A bakery's own production comes first and takes the first generic colour.
    s.Sector = "PANADERIA";
    s.CampoOrdenItemsCaja = "Posicion";
    CargarPanelProveedores();
    EXPECT_EQ(Campo(s.PanelProveedores, &ButtonRecord::Texto), (Textos{"Elaboracion Propia", "Zeta", "Alfa", "Beta"}));
    EXPECT_EQ(Campo(s.PanelProveedores, &ButtonRecord::Codigo), (Textos{"-1", "1", "2", "3"}));
    EXPECT_EQ(Campo(s.PanelProveedores, &ButtonRecord::Color), (Textos{"11", "22", "123", "16777215"}));
}

TEST_P(PanelesArranque, Empleados_VisiblesPorPosicionConColoresPorTurno) {
    const auto carpeta = std::filesystem::temp_directory_path() / ("tpv_fotos_" + std::to_string(::getpid()));
    std::filesystem::create_directories(carpeta);
    std::ofstream(carpeta / "ana.png") << "x";
    sesion().CarpetaFotos = carpeta.string() + "/";
    for (const char* valores :
         {"(1,'Ana','Gil','ana.png',Null,0,0,-1,5)", "(2,'Luis','Mora','falta.png',Null,Null,0,-1,4)",
          "(3,'Eva',Null,Null,Null,0,0,-1,3)", "(4,'Pau','Sanz',Null,Null,0,0,-1,2)",
          "(5,'Rosa','Vidal',Null,Null,0,0,-1,1)", "(6,'De','Baja',Null,Null,0,-1,-1,0)",
          "(7,'Oculto','X',Null,Null,0,0,0,0)"})
        Ejecutar({std::string("insert into empleados (codigo,nombre,apellidos,imagen,color,emp_color,baja,"
                              "mostrar_caja,posicion) values ") + valores});
    CargarPanelEmpleados();
    const PanelRegistros& p = sesion().PanelEmpleados;
    EXPECT_EQ(Campo(p, &ButtonRecord::Codigo), (Textos{"5", "4", "3", "2", "1"}));
    EXPECT_EQ(Campo(p, &ButtonRecord::Texto), (Textos{"Rosa Vidal", "Pau Sanz", "Eva ", "Luis Mora", "Ana Gil"}));
    EXPECT_EQ(Campo(p, &ButtonRecord::Color), (Textos{"11", "22", "33", "44", "11"}));
    // Only a picture that exists is shown.
    EXPECT_EQ(Campo(p, &ButtonRecord::Imagen), (Textos{"", "", "", "", sesion().CarpetaFotos + "ana.png"}));
    std::filesystem::remove_all(carpeta);
}

TEST_P(PanelesArranque, FormasPago_SinElSaldoYConSuTeclaDeFuncion) {
    for (const char* valores : {"(1,'Contado',Null,Null,0,0,1)", "(2,'Tarjeta','t.png',255,-1,0,2)",
                                "(4,'Dinero en Deposito',Null,Null,0,0,3)", "(3,'Mixto',Null,Null,0,0,4)",
                                "(5,'Vale',Null,Null,0,-1,5)"})
        Ejecutar({std::string("insert into formapago (codigo,nombre,imagen,color,fpa_color,borrar,posicion) values ") +
                  valores});
    sesion().CarpetaFotos = "/fotos/";
    CargarPanelFormasPago();
    const PanelRegistros& p = sesion().PanelFormasPago;
    EXPECT_EQ(Campo(p, &ButtonRecord::Texto), (Textos{"<F1> Contado", "<F2> Tarjeta", "<F3> Mixto"}));
    EXPECT_EQ(Campo(p, &ButtonRecord::Codigo), (Textos{"1", "2", "3"}));
    EXPECT_EQ(Campo(p, &ButtonRecord::Color), (Textos{"11", "255", "22"}));
    // No test of the file for payment methods.
    EXPECT_EQ(Campo(p, &ButtonRecord::Imagen), (Textos{"", "/fotos/t.png", ""}));
}

TEST_P(PanelesArranque, Clientes_PorNombreConLasReglasDeNull) {
    Ejecutar({
        "insert into clientes (Codigo,Nombre,Apellidos,Nacimiento,Descuento,activardindep,dindep,borrar) values "
        "(1,'Bea','Ruiz',Null,Null,Null,Null,0)",
        "insert into clientes (Codigo,Nombre,Apellidos,Nacimiento,Descuento,activardindep,dindep,borrar) values "
        "(2,'Ana','Gil',#03/15/1980#,10,-1,25.5,0)",
        "insert into clientes (Codigo,Nombre,Apellidos,borrar) values (3,'Borrado','X',-1)",
        "insert into clientes (Codigo,Nombre,Apellidos,borrar) values (-1,'Negativo','X',0)",
    });
    CargarClientes();
    const ListaClientes& c = sesion().Clientes;
    ASSERT_EQ(c.size(), 2u);
    EXPECT_EQ(c[0].Nombre, "Ana");
    EXPECT_EQ(c[0].Codigo, 2);
    EXPECT_EQ(c[0].Nacimiento, DateSerial(1980, 3, 15));
    EXPECT_EQ(c[0].Descuento, 10.0);
    EXPECT_TRUE(c[0].ActivarDinDep);
    EXPECT_EQ(c[0].DinDep, 25.5);
    EXPECT_EQ(c[1].Apellidos, "Ruiz");
    EXPECT_EQ(c[1].Nacimiento, DateSerial(2000, 1, 1));
    EXPECT_EQ(c[1].Descuento, 0.0);
    EXPECT_FALSE(c[1].ActivarDinDep);
    EXPECT_EQ(c[1].DinDep, 0.0);

    // A customer without surname has no rule: the start fails on it.
    Ejecutar({"insert into clientes (Codigo,Nombre,Apellidos,borrar) values (4,'Sin','',0)",
              "update clientes set Apellidos = Null where Codigo = 4"});
    EXPECT_EQ(ErrorDe([] { CargarClientes(); }).numero, kErrInvalidUse);
}

TPV_EN_CADA_MOTOR(PanelesArranque);

}  // namespace
}  // namespace tpv
